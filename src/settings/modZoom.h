// How much larger than its font size the page is shown, in percent.
#pragma once

#include <array>

inline constexpr std::array ZoomSteps{100, 125, 150, 175, 200, 250, 300};

bool IsZoomStep(int percent);

/// The step that makes the page as large as the desktop's own letters, as nearly as may be.
/// @param desktopPoints  size of the desktop's font; at 9 points the page is shown as it is
int ZoomForDesktopFont(double desktopPoints);

/// The zoom some steps larger, or smaller where they are negative; at most the last and at least the first one.
/// @param percent  one of the steps
int ZoomBy(int percent, int steps);
