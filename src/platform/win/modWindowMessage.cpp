#include "platform/modWindowMessage.h"

#include <windows.h>

// The names are the same to both forms of the function; the wide one takes them as they stand here.
unsigned RegisterMessageName(const QString &name)
{
    return RegisterWindowMessageW(reinterpret_cast<LPCWSTR>(name.utf16()));
}
