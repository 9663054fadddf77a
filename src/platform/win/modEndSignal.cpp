#include "platform/modEndSignal.h"

// The end of a session closes the windows, as the toolkit answers it.
void EndSignal::TakeRequests() {}
void EndSignal::RefuseRequests() {}
