#include "platform/modEndSignal.h"

// The end of a session closes the windows, as the toolkit answers it.
EndSignal::EndSignal() = default;
EndSignal::~EndSignal() = default;
