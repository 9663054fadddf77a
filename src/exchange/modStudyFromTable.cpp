// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/modStudyFromTable.h"

#include "base/modCodePage.h"
#include "exchange/modBreakLines.h"
#include "exchange/modConvertCode.h"
#include "platform/modReplaceFile.h"
#include "text/modCharCode.h"
#include "text/modCheckText.h"
#include "text/modDecodeText.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QStringView LineEnd = u"\r\n";
constexpr QStringView NothingMade = u"学習ファイルは作りません。";
constexpr QChar ZeroWidthSpace(0x200B);
constexpr qsizetype MaxQuotedChars = 30; // of a line in a message

QString FileNameLine(const QString &name)
{
    return u"\r\n    ファイル名＝"_s + name;
}

/// Whether a character ends a line or moves on to another column or page.
bool IsLayout(QChar character)
{
    return (character >= u'\t' && character <= u'\r') || character == u'\u0085' || character == u'\u2028' ||
           character == u'\u2029';
}

/// Appends a cell, with one space for each run of layout characters.
void AddCell(QStringView cell, QString *text)
{
    cell = cell.trimmed();
    if (std::ranges::none_of(cell, IsLayout)) {
        *text += cell;
        return;
    }
    bool isInRun = false;
    for (const QChar character : cell) {
        if (!IsLayout(character))
            *text += character;
        else if (!isInRun)
            *text += u' ';
        isInRun = IsLayout(character);
    }
}

QString WithFullWidthBrackets(QStringView text)
{
    return text.toString().replace(u'[', u'［').replace(u']', u'］');
}

/// Markup by which flash cards hide words: "{{c1::answer}}" or "{{c1::answer::hint}}". If clozes are nested, only the
/// innermost counts; the rest is text.
const QRegularExpression &Cloze()
{
    static const QRegularExpression cloze(uR"(\{\{c\d+::((?:(?!\{\{|::|\}\}).)*)(?:::(?:(?!\{\{|\}\}).)*)?\}\})"_s);
    return cloze;
}

/// Turns the clozes of a cell into blanks. @param widened  incremented by the number of brackets in their answers
QString WithBlanksOfCloze(const QString &cell, qsizetype *widened)
{
    QString text;
    qsizetype done = 0;
    for (const QRegularExpressionMatch &mark : Cloze().globalMatch(cell)) {
        const QStringView answer = mark.capturedView(1);
        *widened += answer.count(u'[') + answer.count(u']');
        text +=
            QStringView(cell).sliced(done, mark.capturedStart() - done) + u'[' + WithFullWidthBrackets(answer) + u']';
        done = mark.capturedEnd();
    }
    text += QStringView(cell).sliced(done);
    return text.remove(ZeroWidthSpace); // inserted by our own export to break up accidental markup
}

bool HasCloze(const Table &table)
{
    for (int row = 1; row <= qMin(table.RowCount(), PreviewRows); ++row)
        for (int column = 1; column <= table.CellCount(row); ++column)
            if (table.Cell(row, column).contains(u"{{c") &&
                Cloze().match(table.Cell(row, column).toString()).hasMatch())
                return true;
    return false;
}

bool BracketsPair(QStringView text)
{
    return IsBracketCountEqual(text) && IsBracketOrderValid(text);
}

/// Builds the lines of a study file row by row.
class StudyTextMaker
{
  public:
    /// @param widened  number of brackets already made full-width
    StudyTextMaker(const TableOptions &options, qsizetype widened)
        : m_options(options), m_between(WithFullWidthBrackets(options.between))
    {
        m_study.bracketsWidened = widened;
        std::ranges::replace_if(m_between, IsLayout, u' ');
    }

    /// @param cells  separated by TAB
    void AddRow(QStringView cells, int rowNumber)
    {
        QString &text = m_study.text;
        const qsizetype start = text.size();
        m_pieces.clear();
        int column = 0;
        for (const QStringView cell : cells.tokenize(u'\t')) {
            ++column;
            if (!cell.isEmpty()) {
                if (text.size() > start)
                    text += m_between;
                const qsizetype pieceStart = text.size();
                AddPiece(cell, IsHidden(m_options.isHidden, column));
                m_pieces.push_back({pieceStart, text.size()});
            }
        }
        if (GetByteLength(QStringView(text).sliced(start)) > MaxLineBytes)
            BreakRow(start, rowNumber);
        else if (text.size() > start)
            EndLine();
    }

    TableStudyText Take()
    {
        m_study.blanks = int(m_study.text.count(u'['));
        return std::move(m_study);
    }

  private:
    struct Piece
    {
        qsizetype start; // in the text
        qsizetype end;
    };

    void AddPiece(QStringView cell, bool isHidden)
    {
        const bool hasBrackets = cell.contains(u'[') || cell.contains(u']');
        const bool isOneBlank =
            hasBrackets && cell.startsWith(u'[') && cell.indexOf(u']') + 1 == cell.size() && BracketsPair(cell);
        if (isOneBlank || (!isHidden && (!hasBrackets || BracketsPair(cell)))) {
            m_study.text += cell;
            return;
        }
        if (isHidden)
            m_study.text += u'[';
        if (hasBrackets) {
            m_study.bracketsWidened += cell.count(u'[') + cell.count(u']');
            m_study.text += WithFullWidthBrackets(cell);
        } else {
            m_study.text += cell;
        }
        if (isHidden)
            m_study.text += u']';
    }

    void EndLine()
    {
        m_study.text += LineEnd;
        ++m_study.lines;
    }

    /// Breaks the row just added, which is too long.
    void BreakRow(qsizetype start, int rowNumber)
    {
        ++m_study.longRows;
        QStringList lines = {m_study.text.sliced(start)};
        if (BreakLongLines(lines.front(), MaxLineBytes).firstUnbreakable > 0)
            lines = LinesOfPieces();
        m_study.text.truncate(start);
        for (const QString &line : lines) {
            const BrokenLines broken = BreakLongLines(line, MaxLineBytes);
            const bool isUnbreakable = broken.firstUnbreakable > 0;
            m_study.text += isUnbreakable ? line : broken.text;
            m_study.lines += int(broken.text.count(LineEnd));
            EndLine();
            if (isUnbreakable && m_study.unbreakableRow == 0) {
                m_study.unbreakableRow = rowNumber;
                m_study.unbreakable = line.left(MaxQuotedChars);
            }
        }
    }

    /// The row broken between columns, with as many on a line as fit.
    QStringList LinesOfPieces() const
    {
        QStringList lines;
        for (const auto &[start, end] : m_pieces) {
            const QString piece = m_study.text.sliced(start, end - start);
            const QString longer = lines.isEmpty() ? QString() : QString(lines.back() + m_between + piece);
            if (!lines.isEmpty() && GetByteLength(longer) <= MaxLineBytes)
                lines.back() = longer;
            else
                lines += piece;
        }
        return lines;
    }

    const TableOptions &m_options;
    QString m_between;
    std::vector<Piece> m_pieces; // of the current row
    TableStudyText m_study;
};

/// The last of the first `columns` columns that has any text in the rows shown; 0 if none has.
int LastColumnWithText(const Table &table, int columns)
{
    for (int column = columns; column > 0; --column)
        for (int row = 1; row <= qMin(table.RowCount(), PreviewRows); ++row)
            if (!table.Cell(row, column).trimmed().isEmpty())
                return column;
    return 0;
}

/// Whether any hidden cell has text. Fast, because one of the first nearly always does.
bool HidesText(const Table &table, const TableOptions &options)
{
    for (int row = options.skipsFirstRow ? 2 : 1; row <= table.RowCount(); ++row)
        for (int column = 1; column <= options.isHidden.size(); ++column)
            if (IsHidden(options.isHidden, column) && !table.Cell(row, column).trimmed().isEmpty())
                return true;
    return false;
}

/// "表の3行目 2列目：é（U+00E9）"
QString NameWithCell(const TableCells &cells, const CharacterAt &at)
{
    qsizetype start = 0;
    for (int line = 1; line < at.line; ++line)
        start = cells.text.indexOf(LineEnd, start) + LineEnd.size();
    int column = 1;
    qsizetype index = start;
    for (int character = 1; character < at.column; ++character) {
        column += cells.text[index] == u'\t';
        index += cells.text[index].isHighSurrogate() && cells.text[index + 1].isLowSurrogate() ? 2 : 1;
    }
    return u"表の"_s + QString::number(cells.rowNumbers[size_t(at.line)]) + u"行目 "_s + QString::number(column) +
           u"列目："_s + NameOfUnwritable(at.character);
}

} // namespace

QList<bool> HiddenByDefault(const Table &table)
{
    int hidden = 0;
    if (!HasCloze(table)) {
        const int ofFirstRow = table.CellCount(1);
        hidden = LastColumnWithText(table, ofFirstRow > 1 ? ofFirstRow : table.ColumnCount());
        if (hidden == 0)
            hidden = LastColumnWithText(table, table.ColumnCount());
    }
    QList<bool> isHidden;
    for (int column = 1; column <= table.ColumnCount(); ++column)
        isHidden += column == hidden;
    return isHidden;
}

TableCells CellsOf(const Table &table, const TableOptions &options, int maxRows)
{
    TableCells cells;
    const int lastRow = qMin(table.RowCount(), maxRows);
    for (int row = options.skipsFirstRow ? 2 : 1; row <= lastRow; ++row) {
        const qsizetype start = cells.text.size();
        const int count = table.CellCount(row);
        for (int column = 1; column <= count; ++column) {
            if (column > 1)
                cells.text += u'\t';
            const qsizetype cellStart = cells.text.size();
            AddCell(table.Cell(row, column), &cells.text);
            const QStringView cell = QStringView(cells.text).sliced(cellStart);
            if (!IsHidden(options.isHidden, column) && cell.contains(u"{{c"))
                cells.text.replace(cellStart, cell.size(), WithBlanksOfCloze(cell.toString(), &cells.bracketsWidened));
        }
        if (cells.text.size() - start < count) { // nothing but tabs
            cells.text.truncate(start);
            continue;
        }
        cells.text += LineEnd;
        cells.rowNumbers.push_back(table.NumberOf(row));
    }
    return cells;
}

TableStudyText StudyTextOf(const TableCells &cells, const TableOptions &options)
{
    StudyTextMaker maker(options, cells.bracketsWidened);
    qsizetype start = 0;
    for (size_t line = 1; line < cells.rowNumbers.size(); ++line) {
        const qsizetype end = cells.text.indexOf(LineEnd, start);
        maker.AddRow(QStringView(cells.text).sliced(start, end - start), cells.rowNumbers[line]);
        start = end + LineEnd.size();
    }
    return maker.Take();
}

QString PreviewText(const Table &table, const TableOptions &options)
{
    QStringList lines = StudyTextOf(CellsOf(table, options, PreviewRows), options).text.split(LineEnd.toString());
    lines = lines.first(qMin(lines.size(), qsizetype(PreviewRows)));
    for (QString &line : lines)
        line.truncate(MaxLineBytes); // an unbreakable line may have millions of characters
    return lines.join(u'\n');
}

QString PreviewHint(const Table &table, const TableOptions &options, const QString &preview)
{
    if (preview.contains(u'[') || HidesText(table, options))
        return QString();
    if (preview.isEmpty())
        return u"表の初めの行に文字がありません。"_s;
    return options.isHidden.contains(true) ? u"隠す列に文字がありません。"_s : u"隠す列を一つ以上選んでください。"_s;
}

QString StudyFileTitle(const QString &typed)
{
    QString title = typed.trimmed();
    if (title.endsWith(u".txt", Qt::CaseInsensitive))
        title = title.chopped(4).trimmed();
    // A quote would prevent sessions from being recorded, and GetFileTitle ends a title at the first ".".
    return FileNamePart(title).replace(u'\'', u'’').replace(u'.', u'_');
}

QString TitleRefusal(const QString &title)
{
    if (title.isEmpty())
        return u"学習ファイルの名前を入力してください。"_s;
    if (title.endsWith(u"_印刷用"))
        return u"「_印刷用」で終わる名前は，印刷用ファイルのための名前です。\r\nほかの名前にしてください。"_s;
    return QString();
}

QString UnwritableBetweenMessage(const ConvertedText &between)
{
    QString message = u"列の間に入れる文字に，Shift_JISにない文字があります。"_s + NothingMade;
    for (const CharacterAt &at : between.unwritable)
        message += u"\r\n  "_s + NameOfUnwritable(at.character);
    return message;
}

QString NoBlanksMessage()
{
    return u"空欄にする文字が一つもありません。"_s + NothingMade + u"\r\n隠す列を選び直してください。"_s;
}

QString TableNotEncodedMessage(const TextRefusal &refusal)
{
    if (refusal.fault == TextFault::TooLarge)
        return u"学習ファイルが"_s + QString::number(MaxFileMegabytes) +
               u"MBを超えて開けないため，作りません。\r\n表をいくつかのファイルに分けてください。"_s;
    return u"Shift_JISにしても，文字コードが"_s + refusal.charCode +
           u"と判定されて開けないため，作りません。\r\n"
           u"列の間に入れる文字を，全角の空白などの全角の文字にしてください。"_s;
}

QString TableAccentsQuestion(const TableCells &cells, const ConvertedText &converted)
{
    return u"Shift_JISにない，アクセント記号の付いた文字が"_s + QString::number(converted.accentCount) +
           u"個あります。\r\n  "_s + NameWithCell(cells, converted.firstAccent) +
           u"\r\n\r\nアクセント記号を除きますか？（例：é → e）"_s;
}

QString UnwritableCellsMessage(const TableCells &cells, const ConvertedText &converted)
{
    QString message = u"Shift_JISにない文字があります。"_s + NothingMade;
    for (const CharacterAt &at : converted.unwritable)
        message += u"\r\n  "_s + NameWithCell(cells, at);
    if (const qsizetype more = converted.unwritableCount - converted.unwritable.size(); more > 0)
        message += u"\r\n  ほかに"_s + QString::number(more) + u"個"_s;
    return message + u"\r\n\r\n表をほかの文字に直して保存してから，もう一度選んでください。"_s;
}

QString UnbreakableRowMessage(const TableStudyText &study)
{
    return u"表の"_s + QString::number(study.unbreakableRow) + u"行目は"_s + QString::number(MaxLineBytes) +
           u"バイトを超え，改行できる所がありません。"_s + NothingMade + u"\r\n  "_s + study.unbreakable +
           u"…\r\n\r\n隠す言葉を短くするか，隠さない文に空白か「、」「。」を加えてください。"_s;
}

QString ReplaceStudyFileQuestion(const QString &path)
{
    return u"次の学習ファイルはもうあります。"_s + FileNameLine(QFileInfo(path).fileName()) +
           u"\r\n\r\n新しい学習ファイルで置き換えますか？（元のファイルは「"_s +
           QFileInfo(FreeBackupPath(path)).fileName() + u"」として残します。）"_s;
}

QString StudyFileMadeMessage(const QString &fileName, const QString &keptPath, const Table &table,
                             const TableStudyText &study, const ConvertedText &converted)
{
    const QString kept =
        keptPath.isEmpty() ? QString() : QString(u"\r\n    元のファイル＝"_s + QFileInfo(keptPath).fileName());
    QString message = u"表から学習ファイルを作りました。"_s + FileNameLine(fileName) + kept + u"\r\n    行の数＝"_s +
                      QString::number(study.lines) + u"，空欄の数＝"_s + QString::number(study.blanks);
    if (const int uneven = table.UnevenRows(); uneven > 0)
        message += u"\r\n\r\n列の数が最初の行と違う行が"_s + QString::number(uneven) + u"行あります。"_s;
    if (study.longRows > 0)
        message += u"\r\n\r\n"_s + QString::number(MaxLineBytes) + u"バイトを超える"_s +
                   QString::number(study.longRows) + u"行を，途中で改行しました。"_s;
    if (study.bracketsWidened > 0)
        message += u"\r\n\r\n表の中の[ ]を"_s + QString::number(study.bracketsWidened) + u"個，全角にしました。"_s;
    return message + ReplacedRemarks(converted);
}
