// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/modReadTable.h"

#include "exchange/modTableFormat.h"
#include "text/modDecodeText.h"

#include <QDeadlineTimer>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr struct
{
    QStringView separator;
    QStringView name;
} NamedSeparators[] = {{u",", u"カンマ"},     {u"\t", u"タブ"},           {u";", u"セミコロン"},
                       {u" - ", u"ハイフン"}, {u" \u2013 ", u"ダッシュ"}, {u" \u2014 ", u"長いダッシュ"}};

bool IsTextCharacter(QChar character)
{
    const bool isBreak = character == u'\t' || character == u'\r' || character == u'\n';
    return isBreak || (character >= u' ' && character != QChar::ReplacementCharacter);
}

/// The encoding of a table. DetectCharCode recognises UTF-16 only by its byte-order mark, but a table has line ends and
/// separators, in which every second byte is zero.
CharCode GuessTableCode(const QByteArray &bytes)
{
    const CharCode detected = DetectCharCode(WholeFile(bytes));
    const bool isMarked = detected == CharCode::Utf16Le || detected == CharCode::Utf16Be;
    if (isMarked || bytes.size() % 2 != 0 || !bytes.contains('\0'))
        return detected;
    qsizetype little = 0; // ASCII characters, by byte order
    qsizetype big = 0;
    for (qsizetype at = 0; at < bytes.size(); at += 2) {
        little += bytes[at] > 0 && bytes[at + 1] == 0;
        big += bytes[at] == 0 && bytes[at + 1] > 0;
    }
    constexpr qsizetype maxCharsPerAscii = 16; // at least one in so many must be ASCII
    if (qMax(little, big) < 2 + bytes.size() / 2 / maxCharsPerAscii)
        return detected;
    const CharCode guess = little >= big ? CharCode::Utf16Le : CharCode::Utf16Be;
    return std::ranges::all_of(DecodeText(bytes, guess), IsTextCharacter) ? guess : detected;
}

bool ReadsAsTable(CharCode code)
{
    return code != CharCode::None && code != CharCode::Utf7;
}

} // namespace

TableRefusal TableSource::Decode(const QByteArray &bytes, CharCode code, const PictureNameOf &pictureNameOf)
{
    const CharCode guess = GuessTableCode(bytes);
    m_code = code == CharCode::None || (code == CharCode::Utf16Le && guess == CharCode::Utf16Be) ? guess : code;
    m_reader.reset();
    m_text = ReadsAsTable(m_code) ? DecodeText(bytes, m_code) : QString();
    m_format = DetectTableFormat(m_text);
    m_format.pictureNameOf = pictureNameOf;
    m_isText = ReadsAsTable(m_code) && !m_text.contains(QChar::Null);
    m_refusal = m_isText ? TableRefusal() : NoTextTable();
    m_isRead = true;
    return m_refusal;
}

void TableSource::Split(const QString &separator)
{
    if (!m_isText)
        return;
    TableFormat format = m_format;
    if (!separator.isEmpty())
        format.separator = separator;
    m_refusal = TableRefusal();
    m_reader.emplace(m_text, format, m_reader ? m_reader->Take() : Table());
    m_isRead = false;
}

bool TableSource::GoOn(const QDeadlineTimer &deadline, int mostRows)
{
    if (m_isRead)
        return false;
    const bool hasMore = m_reader->GoOn(deadline, mostRows);
    const Table &rows = m_reader->Rows();
    const int errorLine = hasMore ? 0 : m_reader->ErrorLine();
    if (rows.ColumnCount() > MaxColumns)
        m_refusal = TooManyColumns(rows.ColumnCount());
    else if (errorLine > 0)
        m_refusal = QuoteNeverClosed(errorLine);
    else if (m_reader->Done() == 1 && rows.RowCount() == 0)
        m_refusal = EmptyTable();
    m_isRead = m_refusal || m_reader->Done() == 1;
    return !m_isRead;
}

TableRefusal ReadTableBytes(const QByteArray &bytes, TableReading *reading, Table *table)
{
    *table = Table();
    TableSource source;
    TableRefusal refusal = source.Decode(bytes, reading->code);
    reading->code = source.Code();
    if (reading->separator.isEmpty())
        reading->separator = source.FoundSeparator();
    if (refusal)
        return refusal;
    source.Split(reading->separator);
    source.GoOn(QDeadlineTimer(QDeadlineTimer::Forever));
    *table = source.Rows();
    return source.Refusal();
}

QString TableCodeName(CharCode code)
{
    switch (code) {
    case CharCode::Sjis:
        return u"Shift_JIS"_s;
    case CharCode::Utf8:
    case CharCode::Utf8Bom:
        return u"UTF-8"_s;
    case CharCode::Utf16Le:
    case CharCode::Utf16Be:
        return u"UTF-16"_s;
    default:
        return CharCodeName(code);
    }
}

QString SeparatorName(const QString &separator)
{
    for (const auto &named : NamedSeparators)
        if (named.separator == separator)
            return named.name.toString();
    return separator;
}

QString SeparatorByName(const QString &name)
{
    for (const auto &named : NamedSeparators)
        if (named.name == name)
            return named.separator.toString();
    return name;
}

TableRefusal NoTextTable()
{
    return {u"テキストではないか，ほかの文字コードです。"_s,
            u"表計算ソフトの表は，UTF-8のCSVとして保存してから選んでください。"_s};
}

TableRefusal QuoteNeverClosed(int line)
{
    return {QString::number(line) + u"行目から始まる \" が閉じられていません。"_s,
            u"\" で始まるセルは，終わりにも \" を付けてください。\" を文字として使う所では，\"\" と二つ続け，"
            u"セルの前後も \" で囲んでください。"_s};
}

TableRefusal EmptyTable()
{
    return {u"表の行が一つもありません。"_s, QString()};
}

TableRefusal TooManyColumns(int columns)
{
    return {u"列が"_s + QString::number(columns) + u"列あります。"_s,
            QString::number(MaxColumns) + u"列までの表を選んでください。"_s};
}

QString TableNotReadMessage(const QString &name, const TableRefusal &refusal)
{
    const QString advice = refusal.advice.isEmpty() ? QString() : QString(u"\r\n\r\n"_s + refusal.advice);
    return u"次のファイルは，表として読めません。"_s + u"\r\n    ファイル名＝"_s + name + u"\r\n    理由＝"_s +
           refusal.reason + advice;
}
