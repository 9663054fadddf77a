// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modShell.h"

#include <windows.h>
// After windows.h, whose types it needs.
#include <shellapi.h>

// The wide form, because a folder name may contain characters outside the machine's code page.
bool ShellOpen(const QString &path, const QString &workingFolder)
{
    const HINSTANCE result = ShellExecuteW(nullptr, L"open", reinterpret_cast<LPCWSTR>(path.utf16()), nullptr,
                                           reinterpret_cast<LPCWSTR>(workingFolder.utf16()), SW_SHOWNORMAL);
    return reinterpret_cast<intptr_t>(result) > 32; // 32 and below are error codes
}
