// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modDarkMode.h"

#include <windows.h>

class DarkMode::Source
{
};

// Windows reports a change by a new palette of Qt's or, as all systems, when the user returns to the program.
DarkMode::DarkMode() = default;

DarkMode::~DarkMode() = default;

// In high contrast mode the palette has the right colours, and the dark-mode setting does not apply.
bool DarkMode::IsDark() const
{
    HIGHCONTRASTW contrast = {};
    contrast.cbSize = sizeof contrast;
    if (SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) &&
        (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0)
        return false;
    DWORD isLight = 1;
    DWORD size = sizeof isLight;
    const LSTATUS status =
        RegGetValueW(HKEY_CURRENT_USER, L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
                     L"AppsUseLightTheme", RRF_RT_REG_DWORD, nullptr, &isLight, &size);
    return status == ERROR_SUCCESS && isLight == 0;
}
