// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Writing any value to any ini file: the value round-trips, and every other line of the file is unchanged.
#include "base/modCodePage.h"
#include "input.h"
#include "platform/modProfile.h"
#include "require.h"
#include "text/modTextDifference.h"

namespace {

const QString Section = QStringLiteral("setting");

} // namespace

// Input: a byte that selects the key, the value up to a zero byte, the file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const FuzzFile file(QStringLiteral("a.ini"));
    static const QByteArray keys[] = {"FontSize", "LineSpace", "TextEditor"};
    FuzzInput input(data, size);
    const QByteArray key = keys[input.TakeByte() % 3];
    const QString value = FromCodePage932(input.TakeText());
    const QByteArray before = input.TakeRest();
    file.Write(before);

    const QString name = QString::fromLatin1(key);
    const bool isOneLine = !value.contains(u'\r') && !value.contains(u'\n');
    Require(WriteProfile(file.Path(), Section, {{name, value}}) == isOneLine);
    const QByteArray after = file.Read();
    if (!isOneLine) {
        Require(after == before);
        return 0;
    }
    // Characters outside the code page are written as "?".
    const QString written = FromCodePage932(ToCodePage932(value));
    Require(ProfileSection(file.Path(), Section, value.size() + 1).Value(name.toUpper(), QStringLiteral("none")) ==
            written);
    const TextDifference difference = DifferenceOf(QString::fromLatin1(before), QString::fromLatin1(after));
    Require(!difference.before.contains(u'\n'));
    const qsizetype lineStart = before.lastIndexOf('\n', difference.offset - before.size() - 1) + 1;
    const qsizetype lineEnd = before.indexOf('\n', difference.offset);
    const QByteArray line = before.mid(lineStart, lineEnd < 0 ? -1 : lineEnd - lineStart);
    Require(difference.before.isEmpty() || (line.toLower().contains(key.toLower()) && line.contains('=')));
    Require(difference.before.isEmpty() || !difference.after.contains(u'\n'));
    return 0;
}
