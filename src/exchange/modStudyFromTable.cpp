// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/modStudyFromTable.h"

#include "base/modCodePage.h"
#include "base/modFile.h"
#include "exchange/modBreakLines.h"
#include "exchange/modConvertText.h"
#include "platform/modReplaceFile.h"
#include "text/modCheckText.h"

#include <QDeadlineTimer>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QStringView LineEnd = u"\r\n";
constexpr QChar ZeroWidthSpace(0x200B);

/// Whether a character ends a line or moves on to another column or page.
bool IsLayout(QChar character)
{
    return (character >= u'\t' && character <= u'\r') || character == u'\u0085' || character == u'\u2028' ||
           character == u'\u2029';
}

/// A cell with one space for each run of layout characters.
QString CellText(QStringView cell)
{
    cell = cell.trimmed();
    if (std::ranges::none_of(cell, IsLayout))
        return cell.toString();
    QString text;
    bool isInRun = false;
    for (const QChar character : cell) {
        if (!IsLayout(character))
            text += character;
        else if (!isInRun)
            text += u' ';
        isInRun = IsLayout(character);
    }
    return text;
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

/// Appends a cell, in brackets if it is hidden and not yet one blank.
void AddCell(const QString &cell, bool isHidden, TableStudyText *study)
{
    const bool isPaired = IsBracketCountEqual(cell) && IsBracketOrderValid(cell);
    const bool isOneBlank = isPaired && cell.startsWith(u'[') && cell.indexOf(u']') + 1 == cell.size();
    if (isOneBlank || (isPaired && !isHidden)) {
        study->text += cell;
        return;
    }
    study->bracketsWidened += cell.count(u'[') + cell.count(u']');
    const QString widened = WithFullWidthBrackets(cell);
    study->text += isHidden ? QString(u'[' + widened + u']') : widened;
}

/// The last of the first `columns` columns that has any text in the rows shown; 0 if none has.
int LastColumnWithText(const Table &table, int columns)
{
    for (int column = columns; column > 0; --column)
        for (int row = 1; row <= qMin(table.RowCount(), PreviewRows); ++row)
            if (!table.Cell(row, column).trimmed().isEmpty())
                return column;
    return 0;
}

int FirstRow(const TableOptions &options)
{
    return options.skipsFirstRow ? 2 : 1;
}

/// Whether any hidden cell has text. Fast, because one of the first nearly always does.
bool HidesText(const Table &table, const TableOptions &options)
{
    for (int row = FirstRow(options); row <= table.RowCount(); ++row)
        for (const TableColumn &each : options.columns)
            if (each.use == ColumnUse::Hide && !table.Cell(row, each.column).trimmed().isEmpty())
                return true;
    return false;
}

/// Usual headings. Those of one row mean the same.
constexpr QStringView Headings[][8] = {
    {u"単語", u"言葉", u"語", u"語句", u"用語", u"word", u"words", u"term"},
    {u"意味", u"説明", u"定義", u"内容", u"meaning", u"definition", u"description"},
    {u"問題", u"問い", u"問", u"質問", u"設問", u"question", u"front", u"表"},
    {u"答え", u"答", u"解答", u"正解", u"回答", u"answer", u"back", u"裏"},
    {u"英語", u"英単語", u"英文", u"english"},
    {u"日本語", u"和訳", u"訳", u"日本語訳", u"japanese", u"translation"},
    {u"読み", u"よみ", u"読み方", u"よみがな", u"ふりがな", u"reading"},
    {u"漢字", u"kanji"},
    {u"番号", u"no", u"no.", u"id", u"#", u"number"},
    {u"例文", u"例", u"文", u"example", u"sentence"},
    {u"年", u"年号", u"西暦", u"year"},
    {u"日付", u"月日", u"date"},
    {u"名前", u"名称", u"人名", u"name"},
    {u"出来事", u"できごと", u"事項", u"事件", u"event"},
    {u"図", u"画像", u"写真", u"image", u"picture"},
    {u"備考", u"メモ", u"注", u"ヒント", u"note", u"notes", u"hint"},
    {u"分類", u"種類", u"タグ", u"category", u"tag", u"tags"},
};

/// The row of Headings that has a cell; -1 if none has.
int HeadingOf(QStringView cell)
{
    for (size_t row = 0; row < std::size(Headings); ++row)
        for (const QStringView heading : Headings[row])
            if (!heading.isEmpty() && cell.compare(heading, Qt::CaseInsensitive) == 0)
                return int(row);
    return -1;
}

/// Whether all cells of a row are usual headings that mean different things.
bool HasUsualHeadings(const Table &table, int row)
{
    std::vector<int> found;
    for (int column = 1; column <= table.CellCount(row); ++column) {
        const QStringView cell = table.Cell(row, column).trimmed();
        if (cell.isEmpty())
            continue;
        const int heading = HeadingOf(cell);
        if (heading < 0 || std::ranges::find(found, heading) != found.end())
            return false;
        found.push_back(heading);
    }
    return found.size() > 1;
}

enum class CellKind
{
    Empty,
    Number,
    Latin,
    Japanese,
    Mixed,
};

CellKind KindOf(QStringView cell)
{
    CellKind kind = CellKind::Empty;
    for (const QChar character : cell) {
        const bool isJapanese = character.script() == QChar::Script_Han ||
                                character.script() == QChar::Script_Hiragana ||
                                character.script() == QChar::Script_Katakana;
        const CellKind ofCharacter = isJapanese             ? CellKind::Japanese
                                     : character.isLetter() ? CellKind::Latin
                                     : character.isDigit()  ? CellKind::Number
                                                            : CellKind::Empty;
        if (ofCharacter == CellKind::Empty || ofCharacter == kind)
            continue;
        if (kind != CellKind::Empty)
            return CellKind::Mixed;
        kind = ofCharacter;
    }
    return kind;
}

/// The kind of all cells of a column below the first, in the rows shown; Mixed if they differ or are too few to tell.
CellKind KindBelowFirst(const Table &table, int column)
{
    constexpr int leastRows = 3;
    const int last = qMin(table.RowCount(), PreviewRows);
    const CellKind kind = last > leastRows ? KindOf(table.Cell(2, column)) : CellKind::Mixed;
    for (int row = 3; row <= last; ++row)
        if (KindOf(table.Cell(row, column)) != kind)
            return CellKind::Mixed;
    return kind;
}

} // namespace

QList<TableColumn> ColumnsByDefault(const Table &table)
{
    int hidden = 0;
    if (!HasCloze(table) && table.RowCount() > 0) {
        const int ofFirstRow = table.CellCount(1);
        hidden = LastColumnWithText(table, ofFirstRow > 1 ? ofFirstRow : table.ColumnCount());
        if (hidden == 0)
            hidden = LastColumnWithText(table, table.ColumnCount());
    }
    QList<TableColumn> columns;
    for (int column = 1; column <= table.ColumnCount(); ++column)
        columns.push_back({column, column == hidden ? ColumnUse::Hide : ColumnUse::Show});
    return columns;
}

bool GuessHeading(const Table &table)
{
    if (table.RowCount() < 2 || table.CellCount(1) < 2)
        return false;
    if (HasUsualHeadings(table, 1))
        return true;
    const CellKind ofAll = KindOf(table.Cell(1, 1));
    bool isOneKind = true;
    bool differs = false;
    bool isAboveNumbers = false;
    for (int column = 1; column <= table.CellCount(1); ++column) {
        const CellKind kind = KindOf(table.Cell(1, column));
        if (kind == CellKind::Empty)
            return false; // a heading names each column
        const CellKind below = KindBelowFirst(table, column);
        isOneKind = isOneKind && kind == ofAll;
        differs = differs || (below != kind && (below == CellKind::Latin || below == CellKind::Japanese));
        isAboveNumbers = isAboveNumbers || (below == CellKind::Number && kind != CellKind::Number);
    }
    return isAboveNumbers || (isOneKind && ofAll != CellKind::Mixed && differs);
}

TableTextMaking::TableTextMaking(const Table &table, const TableOptions &options, int maxRows)
    : m_table(table), m_options(options), m_lastRow(qMin(table.RowCount(), maxRows)), m_nextRow(FirstRow(options))
{
    m_options.between = WithFullWidthBrackets(options.between);
    std::ranges::replace_if(m_options.between, IsLayout, u' ');
    for (int column = int(options.columns.size()) + 1; column <= table.ColumnCount(); ++column)
        m_options.columns.push_back({column, ColumnUse::Show});
}

bool TableTextMaking::GoOn(const QDeadlineTimer &deadline)
{
    constexpr int rowsOfPiece = 64; // asking for the time takes as long as a short row
    while (m_nextRow <= m_lastRow) {
        for (int left = rowsOfPiece; left > 0 && m_nextRow <= m_lastRow; --left)
            AddRow(m_nextRow++);
        if (deadline.hasExpired())
            break;
    }
    return m_nextRow <= m_lastRow;
}

double TableTextMaking::Done() const
{
    return m_lastRow == 0 ? 1 : double(m_nextRow - 1) / m_lastRow;
}

void TableTextMaking::AddRow(int row)
{
    const qsizetype start = m_study.text.size();
    for (const auto &[column, use] : m_options.columns) {
        if (use == ColumnUse::Leave)
            continue;
        const bool isHidden = use == ColumnUse::Hide;
        QString cell = CellText(m_table.Cell(row, column));
        if (!isHidden && cell.contains(u"{{c"))
            cell = WithBlanksOfCloze(cell, &m_study.bracketsWidened);
        if (cell.isEmpty())
            continue;
        if (m_study.text.size() > start)
            m_study.text += m_options.between;
        AddCell(cell, isHidden, &m_study);
    }
    if (m_study.text.size() > start) {
        m_study.rowNumbers.push_back(m_table.NumberOf(row));
        m_study.text += LineEnd;
    }
}

TableStudyText StudyTextOf(const Table &table, const TableOptions &options, int maxRows)
{
    TableTextMaking making(table, options, maxRows);
    making.GoOn(QDeadlineTimer(QDeadlineTimer::Forever));
    return making.Take();
}

QString PreviewText(const Table &table, const TableOptions &options)
{
    const QString text = StudyTextOf(table, options, PreviewRows).text;
    QStringList lines = BreakLongLines(text, MaxLineBytes).text.split(LineEnd.toString());
    lines = lines.first(qMin(lines.size(), qsizetype(PreviewRows)));
    for (QString &line : lines)
        line.truncate(MaxLineBytes); // an unbreakable line may have millions of characters
    return lines.join(u'\n');
}

QString PreviewHint(const Table &table, const TableOptions &options, const QString &preview)
{
    if (ConvertText(options.between, Accents::Remove).unwritableCount > 0)
        return u"列の間に入れる文字に，Shift_JISにない文字があります。"_s;
    if (preview.contains(u'[') || HidesText(table, options))
        return QString();
    if (preview.isEmpty())
        return u"表の初めの行に文字がありません。"_s;
    const auto isHidden = [](const TableColumn &each) { return each.use == ColumnUse::Hide; };
    return std::ranges::any_of(options.columns, isHidden) ? u"隠す列に文字がありません。"_s
                                                          : u"隠す列を一つ以上選んでください。"_s;
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

QString ReplaceStudyFileQuestion(const QString &path)
{
    return u"次の学習ファイルはもうあります。\r\n    ファイル名＝"_s + QFileInfo(path).fileName() +
           u"\r\n\r\n新しい学習ファイルで置き換えますか？（元のファイルは「"_s +
           QFileInfo(FreeBackupPath(path)).fileName() + u"」として残します。）"_s;
}

QString TableRemarks(const Table &table, const TableStudyText &study)
{
    QString remarks;
    if (const int uneven = table.UnevenRows(); uneven > 0)
        remarks += u"\r\n\r\n列の数が最初の行と違う行が"_s + QString::number(uneven) + u"行あります。"_s;
    if (study.bracketsWidened > 0)
        remarks += u"\r\n\r\n表の中の[ ]を"_s + QString::number(study.bracketsWidened) + u"個，全角にしました。"_s;
    return remarks;
}
