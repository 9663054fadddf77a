// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Converting any bytes from any encoding to code page 932, breaking long lines, and making a study file of the text.
#include "base/modCodePage.h"
#include "exchange/modBreakLines.h"
#include "exchange/modLineCheck.h"
#include "exchange/modStudyFromText.h"
#include "input.h"
#include "require.h"
#include "text/modCheckText.h"
#include "text/modDecodeText.h"
#include "text/modReadText.h"

#include <QDeadlineTimer>

namespace {

/// No character is lost in code page 932, and a second conversion changes nothing.
void CheckConverted(const ConvertedText &converted)
{
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

/// Either the reader accepts what was written, or a message or the report says why not.
void CheckMade(StudyFromText made, int choices)
{
    const QDeadlineTimer forever(QDeadlineTimer::Forever);
    Require(!made.GoOn(forever));
    const TextFaults &faults = made.Faults();
    Require(faults.entries.size() <= MaxFaultEntries);
    Require((faults.accents + faults.unwritable + faults.brackets + faults.longLines == 0) ||
            !faults.entries.isEmpty());
    made.Make({.keepsKana = !faults.asEuc.isEmpty() && (choices & 1),
               .accents = choices & 2 ? Accents::Keep : Accents::Remove,
               .rest = choices & 4 ? WithoutEquivalent::Geta : WithoutEquivalent::Remove,
               .halvesBrackets = !(choices & 8),
               .breaksLines = !(choices & 16)});
    Require(!made.GoOn(forever));
    QByteArray written;
    QString message;
    Require(!made.Report(QString(), QString(), QString()).isEmpty());
    if (const TextRefusal refusal = made.Encode(&written)) {
        Require(!refusal.message.isEmpty() && refusal.line >= 1);
        return;
    }
    Require(CheckTextEncoding(QStringLiteral("/a.txt"), written, &message) && message.isEmpty());
    StudyLines lines;
    ReadAllLines(written, ExpandTabs::Yes, &lines);
    const bool canBeStudied = lines.BracketsTakeTurns() && lines.LongestLineBytes() <= MaxLineBytes;
    Require(canBeStudied == made.Remains().isEmpty());
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
