#include "platform/modWindowMessage.h"

#include <windows.h>

unsigned RegisterMessageName(const QString &name)
{
    return RegisterWindowMessageW(reinterpret_cast<LPCWSTR>(name.utf16()));
}
