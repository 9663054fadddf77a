#include "platform/modInputMethod.h"

// Qt uses the system's input method.
InputMethodScope::InputMethodScope() = default;
InputMethodScope::~InputMethodScope() = default;
