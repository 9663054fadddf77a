#include "platform/modShell.h"

#include <windows.h>
// windows.h stands first: shellapi.h needs its types.
#include <shellapi.h>

// The wide form: a learner's folder may have a name that the machine's code page lacks.
bool ShellOpen(const QString &path, const QString &workingFolder)
{
    const HINSTANCE result = ShellExecuteW(nullptr, L"open", reinterpret_cast<LPCWSTR>(path.utf16()), nullptr,
                                           reinterpret_cast<LPCWSTR>(workingFolder.utf16()), SW_SHOWNORMAL);
    return reinterpret_cast<intptr_t>(result) > 32; // ShellExecute: 32 and below are its error numbers
}
