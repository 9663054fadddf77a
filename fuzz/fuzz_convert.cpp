// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Converting any bytes from any encoding to code page 932, including breaking long lines.
#include "base/modCodePage.h"
#include "exchange/modConvertCode.h"
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

/// All lines are within the limit, and nothing but blanks was removed.
void CheckBroken(const QString &text)
{
    const BrokenLines broken = BreakLongLines(text, MaxLineBytes);
    Require((broken.longLines > 0) == (broken.firstLong > 0) &&
            broken.firstLong <= qMax(broken.firstUnbreakable, broken.firstLong));
    if (broken.firstUnbreakable > 0)
        return;
    StudyLines lines;
    ReadAllLines(ToCodePage932(broken.text), ExpandTabs::Yes, &lines);
    Require(lines.LongestLineBytes() <= MaxLineBytes);
    const auto withoutBlanks = [](QString all) {
        all.removeIf([](QChar character) { return QStringView(u" \t　\r\n").contains(character); });
        return all;
    };
    Require(withoutBlanks(broken.text) == withoutBlanks(text));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzInput input(data, size);
    const CharCode code = CharCode(input.TakeByte() % 10);
    const QByteArray bytes = input.TakeRest();
    const QString text = DecodeText(bytes, code);
    for (const Accents accents : {Accents::Keep, Accents::Remove}) {
        const ConvertedText converted = ConvertText(text, accents);
        CheckConverted(converted);
        CheckBroken(WithHalfWidthBrackets(converted.text));
    }
    // Either the reader accepts what was written, or there is a message.
    QByteArray written;
    QString message;
    if (const TextRefusal refusal = EncodeStudyText(ConvertText(text, Accents::Remove).text, &written))
        Require(!NotEncodedMessage(refusal).isEmpty());
    else
        Require(CheckTextEncoding(QStringLiteral("/a.txt"), written, &message) && message.isEmpty());
    return 0;
}
