#include "platform/modProfile.h"

#include <windows.h>

// The A functions would take the machine's code page, which need not be 932. The W functions keep a file that starts
// without a byte-order mark in the machine's code page too, so on a machine of another code page foreign characters of
// a value are lost; names and values that the program writes itself are ASCII but for the editor's path.
QString ReadProfile(const QString &path, const QString &section, const QString &key, const QString &defaultText,
                    qsizetype maxLength)
{
    QString buffer(maxLength + 1, u'\0');
    GetPrivateProfileStringW(reinterpret_cast<LPCWSTR>(section.utf16()), reinterpret_cast<LPCWSTR>(key.utf16()),
                             reinterpret_cast<LPCWSTR>(defaultText.utf16()), reinterpret_cast<LPWSTR>(buffer.data()),
                             DWORD(buffer.size()), reinterpret_cast<LPCWSTR>(path.utf16()));
    return buffer.left(buffer.indexOf(u'\0'));
}

bool WriteProfile(const QString &path, const QString &section, const QString &key, const QString &value)
{
    return WritePrivateProfileStringW(reinterpret_cast<LPCWSTR>(section.utf16()),
                                      reinterpret_cast<LPCWSTR>(key.utf16()), reinterpret_cast<LPCWSTR>(value.utf16()),
                                      reinterpret_cast<LPCWSTR>(path.utf16())) != 0;
}
