// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Zoom of the page in percent of its font size.
#pragma once

#include <array>

inline constexpr std::array ZoomSteps{100, 125, 150, 175, 200, 250, 300, 350, 400};

bool IsZoomStep(int percent);

/// The step that comes closest to the size of the desktop's own text.
/// @param desktopPoints  size of the desktop's font; 9 points correspond to 100 %
int ZoomForDesktopFont(double desktopPoints);

/// The zoom after a number of steps up, or down if negative, clamped to ZoomSteps.
/// @param percent  one of ZoomSteps
int ZoomBy(int percent, int steps);
