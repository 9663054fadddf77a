// The desktop's switch between light and dark, where the toolkit's palette does not follow it.
#pragma once

/// Whether a switch of the system that the palette does not show says dark. Asks the system each time.
bool IsSystemInDarkMode();
