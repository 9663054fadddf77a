// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Converting any bytes from any encoding to code page 932, breaking long lines, and making a study file of the text.
#include "base/modCodePage.h"
#include "exchange/modStudyFromText.h"
#include "input.h"
#include "require.h"
#include "text/modCheckText.h"
#include "text/modDecodeText.h"
#include "text/modReadText.h"

namespace {

/// No character is lost in code page 932, and a second conversion changes nothing.
void CheckConverted(const ConvertedText &converted)
{
    Require(converted.unwritable.size() == qMin(converted.unwritableCount, qsizetype(MaxUnwritableShown)));
    if (converted.unwritableCount > 0)
        return;
    Require(FromCodePage932(ToCodePage932(converted.text)) == converted.text);
    const ConvertedText again = ConvertText(converted.text, Accents::Keep);
    Require(again.text == converted.text && again.replaced.isEmpty());
}

/// Lines are within the limit unless that is said, and nothing but blanks was removed.
void CheckBroken(const QString &text)
{
    const BrokenLines broken = BreakLongLines(text, MaxLineBytes);
    Require((broken.longLines > 0) == (broken.firstLong > 0));
    Require(broken.broken <= broken.longLines && (broken.broken < broken.longLines) == (broken.firstUnbroken > 0));
    StudyLines lines;
    ReadAllLines(ToCodePage932(broken.text), ExpandTabs::Yes, &lines);
    Require((lines.LongestLineBytes() > MaxLineBytes) == (broken.firstUnbroken > 0));
    const auto withoutBlanks = [](QString all) {
        all.removeIf([](QChar character) { return QStringView(u" \t　\r\n").contains(character); });
        return all;
    };
    Require(withoutBlanks(broken.text) == withoutBlanks(text));
}

/// Either the reader accepts what was written, or there is a message.
void CheckMade(StudyFromText made, int answers)
{
    for (int question = 0; !made.Question().isEmpty(); ++question) {
        Require(question < 4);
        made.Answer((answers >> question) % 2 == 1);
    }
    QByteArray written;
    QString message;
    if (const TextRefusal refusal = made.Encode(&written))
        Require(!refusal.message.isEmpty() && refusal.line >= 1);
    else
        Require(CheckTextEncoding(QStringLiteral("/a.txt"), written, &message) && message.isEmpty());
    Require(!made.Report(QString(), QString(), QString()).isEmpty());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzInput input(data, size);
    const int first = input.TakeByte();
    const QByteArray bytes = input.TakeRest();
    const QString text = DecodeText(bytes, CharCode(first % 10));
    for (const Accents accents : {Accents::Keep, Accents::Remove}) {
        const ConvertedText converted = ConvertText(text, accents);
        CheckConverted(converted);
        CheckBroken(WithHalfWidthBrackets(converted.text));
    }
    CheckMade(StudyFromText(text), first / 10);
    CheckMade(StudyFromText(bytes), first / 10);
    return 0;
}
