// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modWindowMessage.h"

#include <windows.h>

// Both forms of the function share one set of names; the wide one needs no conversion.
unsigned RegisterMessageName(const QString &name)
{
    return RegisterWindowMessageW(reinterpret_cast<LPCWSTR>(name.utf16()));
}
