// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/PageColours.h"

#include "widgets/Contrast.h"
#include "widgets/PageColourChoice.h"

#include <QPalette>

const PageColours &ColoursOf(PageColourChoice choice, const QPalette &desktop, bool isSystemDark)
{
    switch (choice) {
    case PageColourChoice::Light:
        return LightPage;
    case PageColourChoice::Dark:
        return DarkPage;
    case PageColourChoice::Soft:
        return SoftPage;
    case PageColourChoice::SoftDark:
        return SoftDarkPage;
    case PageColourChoice::Desktop:
        break;
    }
    const bool isDark = IsDarker(desktop.color(QPalette::Window), desktop.color(QPalette::WindowText)) || isSystemDark;
    return isDark ? DarkPage : LightPage;
}
