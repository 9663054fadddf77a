// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modProcess.h"

#include <windows.h>

bool StartProcess(const QString &commandLine)
{
    QString line = commandLine; // a copy, as CreateProcess may modify its command line
    line.detach();
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESHOWWINDOW;
    start.wShowWindow = SW_SHOWNORMAL;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(nullptr, reinterpret_cast<LPWSTR>(line.data()), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &start, &process))
        return false;
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return true;
}
