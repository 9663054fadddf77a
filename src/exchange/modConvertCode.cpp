// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/modConvertCode.h"

#include "base/modCodePage.h"
#include "platform/modReplaceFile.h"
#include "text/modCheckText.h"
#include "text/modDecodeText.h"

#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QStringView Unchanged = u"ファイルは元のままです。";
constexpr int MaxReplacedShown = 5; // different characters

QString FileNameLine(const QString &name)
{
    return u"\r\n    ファイル名＝"_s + name;
}

/// "é（U+00E9）": the font may lack the character, or draw it like a similar one.
QString NameAndNumber(char32_t character)
{
    const QString name = NameOfCharacter(character);
    const QString number = NumberOfCharacter(character);
    return name == number ? name : QString(name + u'（' + number + u'）');
}

/// "3行目 5文字目：é（U+00E9）"
QString NameAndPosition(const CharacterAt &at)
{
    return QString::number(at.line) + u"行目 "_s + QString::number(at.column) + u"文字目："_s +
           NameOfUnwritable(at.character);
}

QString NameOfTwin(char16_t twin)
{
    return twin == u' ' ? u"空白"_s : QString(QChar(twin));
}

} // namespace

bool CanConvertFrom(const QString &codeName)
{
    static const QStringList convertible = {u"UTF8"_s, u"UTF8_BOM"_s, u"UTF16_LE"_s, u"UTF16_BE"_s, u"EUC"_s, u"JIS"_s};
    return convertible.contains(codeName);
}

bool CanConvert(const QString &remarks)
{
    constexpr QStringView codeRemark = u"文字コード＝";
    return remarks.startsWith(codeRemark) && CanConvertFrom(remarks.section(u'，', 0, 0).mid(codeRemark.size()));
}

bool ReadsAsShiftJis(const QByteArray &bytes)
{
    return !FromCodePage932(bytes).contains(QChar::ReplacementCharacter);
}

TextRefusal EncodeStudyText(const QString &text, QByteArray *bytes)
{
    *bytes = ToCodePage932(text);
    if (bytes->size() > MaxFileBytes)
        return {.fault = TextFault::TooLarge, .line = 1};
    const CharCode code = DetectCharCode(WholeFile(*bytes));
    if (code != CharCode::Ascii && code != CharCode::Sjis)
        return {.fault = TextFault::WrongCharCode, .line = 1, .charCode = CharCodeName(code)};
    return {};
}

FileFault ReplaceConverted(const QString &path, const QByteArray &before, const QByteArray &converted,
                           QString *backupPath)
{
    QByteArray now;
    if (const FileFault fault = ReadWholeFile(path, &now))
        return fault;
    if (now != before)
        return {path, u"ファイルがほかで変更されました。"_s};
    return ReplaceAndKeep(path, converted, backupPath);
}

QString NameOfUnwritable(char32_t character)
{
    return character == QChar::ReplacementCharacter ? u"文字として読めないバイト"_s : NameAndNumber(character);
}

QString ReplacedRemarks(const ConvertedText &converted)
{
    QString remarks;
    if (!converted.replaced.isEmpty())
        remarks += u"\r\n\r\nShift_JISにない文字を，同じ意味の文字に置き換えました。"_s;
    for (const ReplacedCharacter &replaced :
         converted.replaced.first(qMin(converted.replaced.size(), MaxReplacedShown)))
        remarks += u"\r\n  "_s + NameAndNumber(replaced.from) + u" → "_s + NameOfTwin(replaced.to) + u"　"_s +
                   QString::number(replaced.count) + u"個"_s;
    if (const qsizetype more = converted.replaced.size() - MaxReplacedShown; more > 0)
        remarks += u"\r\n  ほかに"_s + QString::number(more) + u"種類"_s;
    if (converted.accentCount > 0)
        remarks += u"\r\n\r\nアクセント記号を"_s + QString::number(converted.accentCount) + u"個除きました。"_s;
    return remarks;
}

QString NoTextFileMessage(const QString &title)
{
    return u"次のファイルはテキストファイルではないため，変換できません。"_s + Unchanged + FileNameLine(title);
}

QString NotConvertibleMessage(const QString &title, const QString &codeName)
{
    return u"次のファイルは，変換する必要がないか，変換できない文字コードです。"_s + Unchanged + FileNameLine(title) +
           u"\r\n    文字コード＝"_s + codeName;
}

QString EucOrShiftJisQuestion(const QString &title, const QString &asEuc, const QString &asShiftJis)
{
    return u"次のファイルは，EUCともShift_JISとも読めます。"_s + FileNameLine(title) +
           u"\r\n\r\n  EUCとして読むと：\r\n    "_s + asEuc + u"\r\n  Shift_JISとして読むと：\r\n    "_s + asShiftJis +
           u"\r\n\r\nEUCとして，Shift_JISに変換しますか？\r\n"
           u"（「いいえ」を押すと，そのままShift_JISとして開く方法を説明します。）"_s;
}

QString OpenAsShiftJisQuestion()
{
    return u"半角カタカナの短いファイルは，Shift_JISで保存してあってもEUCと判定されることがあります。\r\n"
           u"ひらがなや漢字などの全角の文字を一つ加えて，Shift_JISで保存すると，そのまま開けます。\r\n\r\n"
           u"このファイルをテキストエディタで開きますか？"_s;
}

QString AccentsQuestion(const ConvertedText &converted)
{
    return u"Shift_JISにない，アクセント記号の付いた文字が"_s + QString::number(converted.accentCount) +
           u"個あります。\r\n  "_s + NameAndPosition(converted.firstAccent) +
           u"\r\n\r\nアクセント記号を除きますか？（例：é → e）"_s;
}

QString UnwritableQuestion(const ConvertedText &converted)
{
    QString question = u"Shift_JISにない文字があるため，変換できません。"_s + Unchanged;
    for (const CharacterAt &at : converted.unwritable)
        question += u"\r\n  "_s + NameAndPosition(at);
    if (const qsizetype more = converted.unwritableCount - converted.unwritable.size(); more > 0)
        question += u"\r\n  ほかに"_s + QString::number(more) + u"個"_s;
    return question + u"\r\n\r\nほかの文字に直して保存してから，もう一度変換してください。\r\n"
                      u"最初の文字の行をテキストエディタで開きますか？"_s;
}

QString BracketsQuestion()
{
    return u"半角の[ ]がなく，全角の［ ］だけがあります。全角のままでは空欄になりません。\r\n"
           u"全角の［ ］を半角にしますか？"_s;
}

QString LongLinesQuestion(const BrokenLines &lines, int maxLineBytes)
{
    const QString limit = QString::number(maxLineBytes);
    return limit + u"バイトを超える行が"_s + QString::number(lines.longLines) + u"行あります（最初は"_s +
           QString::number(lines.firstLong) +
           u"行目）。このままでは開けません。\r\n[ ]の外の空白か，「、」「。」の後で改行して，"_s + limit +
           u"バイト以下にしますか？"_s;
}

QString NotEncodedMessage(const TextRefusal &refusal)
{
    if (refusal.fault == TextFault::TooLarge)
        return u"Shift_JISにすると"_s + QString::number(MaxFileMegabytes) +
               u"MBを超えて開けないため，変換しません。"_s + Unchanged +
               u"\r\nいくつかのファイルに分けてから，変換してください。"_s;
    return u"Shift_JISにしても，文字コードが"_s + refusal.charCode + u"と判定されて開けないため，変換しません。"_s +
           Unchanged + u"\r\nひらがなや漢字などの全角の文字を一つ加えて保存してから，もう一度変換してください。"_s;
}

QString ConvertedMessage(const QString &path, const QString &backupPath, const QString &codeName,
                         const ConvertedText &converted, int unbreakableLine)
{
    QString message = codeName + u"からShift_JISに変換しました。"_s + FileNameLine(QFileInfo(path).fileName()) +
                      u"\r\n    元のファイル＝"_s + QFileInfo(backupPath).fileName() + ReplacedRemarks(converted);
    if (unbreakableLine > 0)
        message += u"\r\n\r\n"_s + QString::number(unbreakableLine) + u"行目は"_s + QString::number(MaxLineBytes) +
                   u"バイトを超え，改行できる所がありません。編集して改行を加えてください。"_s;
    return message;
}
