#include "platform/modDarkMode.h"

// A desktop that the toolkit knows gives it its palette, and with that all there is to tell.
bool IsSystemInDarkMode()
{
    return false;
}
