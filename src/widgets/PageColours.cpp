// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/PageColours.h"

#include "platform/modDarkMode.h"
#include "widgets/Contrast.h"
#include "widgets/PageColourChoice.h"

#include <QPalette>

const PageColours &ColoursOf(PageColourChoice choice, const QPalette &desktop)
{
    const bool isDark =
        choice == PageColourChoice::Dark ||
        (choice == PageColourChoice::Desktop &&
         (IsDarker(desktop.color(QPalette::Window), desktop.color(QPalette::WindowText)) || IsSystemInDarkMode()));
    return isDark ? DarkPage : LightPage;
}
