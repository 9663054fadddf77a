// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "app/modUserList.h"

#include "base/modCodePage.h"
#include "platform/modReplaceFile.h"
#include "text/modReadText.h"

#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

QStringList ReadUserNames(const QString &path)
{
    // Without ReadText and its encoding check: a few short names may look like another encoding, and refusing the list
    // would make it appear empty.
    QByteArray bytes;
    if (ReadWholeFile(path, &bytes, MaxUserListBytes))
        return {};
    StudyLines lines;
    ReadAllLines(bytes, ExpandTabs::No, &lines);
    QStringList names;
    for (int line = 1; line <= lines.Count(); ++line)
        names += lines.at1(line).toString();
    return names;
}

FileFault AppendUserName(const QString &path, const QString &name)
{
    QByteArray bytes;
    // An existing list that cannot be read must not be replaced by one with a single name.
    FileFault fault = QFileInfo::exists(path) ? ReadWholeFile(path, &bytes, MaxUserListBytes) : FileFault();
    if (fault)
        return fault;
    if (!bytes.isEmpty() && !bytes.endsWith('\n') && !bytes.endsWith('\r'))
        bytes += "\r\n";
    const OnDisk onDisk = bytes.isEmpty() ? OnDisk::Later : OnDisk::AtOnce; // no other name could be lost
    bytes += ToCodePage932(name) + "\r\n";
    if (FileFault tooLarge = SizeRefusal(path, bytes, MaxUserListBytes))
        return tooLarge;
    return ReplaceFile(path, bytes, onDisk);
}

bool IsUserListed(const QStringList &names, const QString &name)
{
    return names.contains(name) || names.contains(FromCodePage932(ToCodePage932(name)));
}

QStringList CharactersNotForNames(const QString &name)
{
    QStringList characters = CharactersLost(name);
    for (const QChar character : name) {
        const QString number = NameOfCharacter(character.unicode());
        if (character.category() == QChar::Other_Control && !characters.contains(number))
            characters += number;
    }
    return characters;
}
