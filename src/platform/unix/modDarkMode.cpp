// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modDarkMode.h"

// Qt's palette follows the desktops that it supports, and there is no other source to ask.
bool IsSystemInDarkMode()
{
    return false;
}
