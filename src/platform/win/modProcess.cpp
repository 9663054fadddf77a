// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modProcess.h"

#include "platform/modCommandLine.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <array>
#include <string>
#include <windows.h>
// After windows.h, whose types it needs.
#include <shellapi.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The folders in which CreateProcess looks for a program, in its order.
QString SearchedFolders()
{
    std::array<wchar_t, MAX_PATH> system = {};
    std::array<wchar_t, MAX_PATH> windows = {};
    GetSystemDirectoryW(system.data(), MAX_PATH);
    GetWindowsDirectoryW(windows.data(), MAX_PATH);
    return QStringList{QCoreApplication::applicationDirPath(), u"."_s, QString::fromWCharArray(system.data()),
                       QString::fromWCharArray(windows.data()), qEnvironmentVariable("PATH")}
        .join(u';');
}

/// Full path of the file that CreateProcess takes a name for; empty if there is none.
QString FoundProgram(const QString &name)
{
    constexpr DWORD longestPath = 32767;
    std::wstring path(longestPath, L'\0');
    const DWORD length = SearchPathW(SearchedFolders().toStdWString().c_str(), name.toStdWString().c_str(), L".exe",
                                     longestPath, path.data(), nullptr);
    const QString found = QString::fromWCharArray(path.data(), int(length < longestPath ? length : 0));
    return QFileInfo(found).isFile() ? found : QString();
}

} // namespace

bool StartProcess(const QString &commandLine, [[maybe_unused]] const StartFailed &failed)
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

// The wide form, because a folder name may contain characters outside the machine's code page.
bool ShellOpen(const QString &path, const QString &workingFolder, [[maybe_unused]] const StartFailed &failed)
{
    const HINSTANCE result = ShellExecuteW(nullptr, L"open", reinterpret_cast<LPCWSTR>(path.utf16()), nullptr,
                                           reinterpret_cast<LPCWSTR>(workingFolder.utf16()), SW_SHOWNORMAL);
    return reinterpret_cast<intptr_t>(result) > 32; // 32 and below are error codes
}

// A program that is not found here is returned as written, in case CreateProcess still finds one.
QString ProgramOf(const QString &commandLine)
{
    const auto isProgram = [](const QString &name) { return !FoundProgram(name).isEmpty(); };
    const QString program = ParseCommandLine(commandLine, isProgram).program;
    const QString found = FoundProgram(program);
    return found.isEmpty() ? program : found;
}
