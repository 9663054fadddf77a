// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "settings/modZoom.h"

#include <algorithm>
#include <cmath>

bool IsZoomStep(int percent)
{
    return std::ranges::find(ZoomSteps, percent) != ZoomSteps.end();
}

int ZoomForDesktopFont(double desktopPoints)
{
    const double wanted = 100 * desktopPoints / 9;
    return *std::ranges::min_element(ZoomSteps, {}, [wanted](int step) { return std::abs(step - wanted); });
}

int ZoomBy(int percent, int steps)
{
    const auto at = std::ranges::find(ZoomSteps, percent) - ZoomSteps.begin();
    return ZoomSteps[size_t(std::clamp<std::ptrdiff_t>(at + steps, 0, std::ssize(ZoomSteps) - 1))];
}
