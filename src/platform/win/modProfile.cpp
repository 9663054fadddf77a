#include "platform/modCodePage.h"
#include "platform/modFile.h"
#include "platform/modProfile.h"

#include <QFile>

#include <windows.h>

// The functions keep the bytes of a file as text of the machine's code page, the wide forms too. The wide forms are
// taken because only they reach a file in a folder whose name that code page lacks. For the bytes to be code page 932
// on every machine, a value is handed over as that text of the machine's code page which stands for them. Code page 932
// itself and the code pages of one byte a character carry every byte so; the other ones do not (UTF-8, Chinese,
// Korean): there the value goes as it is, and the file then holds the machine's code page instead.

using namespace Qt::Literals::StringLiterals;

namespace {

bool MachineCarriesEveryByte()
{
    CPINFO info = {};
    return GetACP() == 932 || (GetCPInfo(CP_ACP, &info) && info.MaxCharSize == 1);
}

QString ToMachineText(const QString &text)
{
    if (!MachineCarriesEveryByte())
        return text;
    const QByteArray bytes = ToCodePage932(text);
    QString machineText(bytes.size(), Qt::Uninitialized);
    machineText.truncate(MultiByteToWideChar(CP_ACP, 0, bytes.data(), int(bytes.size()),
                                             reinterpret_cast<LPWSTR>(machineText.data()), int(machineText.size())));
    return machineText;
}

QString FromMachineText(const QString &machineText)
{
    if (!MachineCarriesEveryByte())
        return machineText;
    QByteArray bytes(machineText.size() * 2, Qt::Uninitialized);
    bytes.truncate(WideCharToMultiByte(CP_ACP, 0, reinterpret_cast<LPCWSTR>(machineText.utf16()),
                                       int(machineText.size()), bytes.data(), int(bytes.size()), nullptr, nullptr));
    return FromCodePage932(bytes);
}

LPCWSTR Wide(const QString &text)
{
    return reinterpret_cast<LPCWSTR>(text.utf16());
}

} // namespace

QString ReadProfile(const QString &path, const QString &section, const QString &key, const QString &defaultText,
                    qsizetype maxLength)
{
    // One more than the longest value that still has to be cut, and the NUL; a character is at most two of the
    // machine's.
    QString value(2 * maxLength + 2, u'\0');
    GetPrivateProfileStringW(Wide(ToMachineText(section)), Wide(ToMachineText(key)), Wide(ToMachineText(defaultText)),
                             reinterpret_cast<LPWSTR>(value.data()), DWORD(value.size()), Wide(path));
    value.truncate(value.indexOf(u'\0'));
    return FromMachineText(value).left(maxLength);
}

bool WriteProfile(const QString &path, const QString &section, const QString &key, const QString &value)
{
    if (!IsProfileValue(value))
        return false;
    // The system changes a file in its place. So it gets a copy, which then takes the place of the file.
    const QString copy = path + u".new"_s;
    QString error;
    QFile::remove(copy);
    if (QFile::exists(path) && !CopyWholeFile(path, copy, &error))
        return false;
    const bool isWritten = WritePrivateProfileStringW(Wide(ToMachineText(section)), Wide(ToMachineText(key)),
                                                      Wide(ToMachineText(ProfileText(value))), Wide(copy));
    WritePrivateProfileStringW(nullptr, nullptr, nullptr, Wide(copy)); // writes out what the system holds back
    if (isWritten && MoveFileExW(Wide(copy), Wide(path), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        return true;
    QFile::remove(copy);
    return false;
}
