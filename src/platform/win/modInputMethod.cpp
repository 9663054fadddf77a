#include "platform/modInputMethod.h"

// The toolkit takes the system's input method.
InputMethodScope::InputMethodScope() = default;
InputMethodScope::~InputMethodScope() = default;
