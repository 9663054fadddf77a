// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/modPrintSheet.h"

#include "base/modFile.h"
#include "platform/modReplaceFile.h"
#include "records/modHardNote.h"
#include "text/modCheckText.h"
#include "text/modPictureFile.h"
#include "text/modPictureName.h"
#include "text/modReadText.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QUrl>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>
#include <random>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

// In these fonts, half-width letters are exactly half as wide as full-width ones. A number takes the two cells of the
// brackets; one of several characters is slightly wider. Browsers without margin boxes leave out the page number.
constexpr QStringView Style = uR"(
@page { size: A4; margin: 18mm 15mm 20mm;
  @bottom-center { content: counter(page) " / " counter(pages); font: 10pt sans-serif; } }
html { color-scheme: light; }
body { margin: 0; color: #000; overflow-wrap: anywhere;
  font-family: "BIZ UDGothic", "MS Gothic", "Osaka-Mono", "Hiragino Sans", "Noto Sans Mono CJK JP", "IPAGothic",
    monospace; }
h1, h2 { margin: 0 0 .5em; font-size: 15pt; line-height: 1.4; break-after: avoid; }
.name { margin: 0 0 1.5em; text-align: right; }
.name b { float: left; font-weight: normal; }
.name span { display: inline-block; width: 13em; border-bottom: 1px solid; margin: 0 1em 0 .5em; }
.name .date { width: 7em; }
.line { white-space: pre-wrap; break-inside: avoid; }
.blank { white-space: pre; }
.blank small { font-size: .8em; }
.rule { display: inline-block; box-sizing: border-box; height: 1.2em; border-bottom: 1px solid #000;
  vertical-align: -.2em; line-height: 1.2em; white-space: pre; }
.told { vertical-align: baseline; color: #c00; }
img { max-width: calc(100% - 1em); max-height: 80mm; margin: .3em 1em .3em 0; vertical-align: top; }
img:not(:only-child) { max-width: 46%; }
.answers { break-before: page; }
.columns { columns: 12em; column-gap: 1.5em; line-height: 1.5; }
.columns div { break-inside: avoid; white-space: pre-wrap; padding-left: 2.3em; text-indent: -2.3em; }
.columns b { display: inline-block; box-sizing: border-box; min-width: 2.3em; padding-right: .3em; text-indent: 0;
  font-weight: normal; }
@media print { .screen-only { display: none; } }
@media screen {
  html { color-scheme: light dark; background: #ddd; }
  body { box-sizing: border-box; width: 210mm; margin: 1em auto; padding: 18mm 15mm; color: CanvasText;
    background: Canvas; }
  img { background: #fff; }
  .rule { border-color: CanvasText; }
  .screen-only { margin: -10mm 0 2em; padding: .3em 1em; color: #000; background: #fff3c4; }
  .answers { margin-top: 3em; border-top: 1px dashed; padding-top: 2em; }
}
@media screen and (prefers-color-scheme: dark) { html { background: #000; } .told { color: #ff8a80; } }
)";

constexpr double MmPerPoint = 25.4 / 72;
constexpr double PxPerMm = 96 / 25.4;
constexpr double PageWidthMm = 180; // within the margins
constexpr double PageHeightMm = 259;
constexpr double ColumnGapMm = 8;

constexpr int CellsOfEmptyBlank = 4; // leaves room to write
// Handwriting needs this much, whatever the size of the print.
constexpr double LeastWrittenMm = 15;
constexpr double WrittenCellMm = 4.5; // half of a kanji
constexpr double EqualWidthMm = 25;
// A longer rule is made of several, so that it can go on in the next line. Fits a column with the number before it.
constexpr double LongestRuleMm = 60;

/// The settings as rules of the style.
QString StyleOf(const PrintSettings &print)
{
    const QString pitch = u"calc(1em + "_s + QString::number(print.lineGapMm) + u"mm)"_s;
    const QString columns = print.columns > 1
                                ? QString(u".lines { columns: "_s + QString::number(print.columns) +
                                          u"; column-gap: "_s + QString::number(ColumnGapMm) + u"mm; }\n"_s)
                                : QString();
    return u"body { font-size: "_s + QString::number(print.points) + u"pt; line-height: "_s + pitch +
           u"; }\n.line { min-height: "_s + pitch + u"; }\n"_s + columns;
}

int Pages(int count, int perPage)
{
    return count / perPage + (count % perPage > 0);
}

int LinesPerPage(const PrintSettings &print)
{
    return int(PageHeightMm / (print.points * MmPerPoint + print.lineGapMm)) * print.columns;
}

int AnswersPerPage(const PrintSettings &print)
{
    const double emMm = print.points * MmPerPoint;
    const int columns = int((PageWidthMm + 1.5 * emMm) / (13.5 * emMm));
    return int(PageHeightMm / (1.5 * emMm)) * columns;
}

/// HTML that replaces some characters of a line.
struct Replacement
{
    qsizetype start; // 0-based
    qsizetype end;
    QString html;
};

QString Escaped(QStringView text)
{
    return text.toString().toHtmlEscaped();
}

/// The next characters of an answer, up to a cell.
QStringView CharactersUpTo(double cell, QStringView *rest, int *cellsBefore)
{
    qsizetype end = 0;
    while (end < rest->size() && *cellsBefore < cell)
        *cellsBefore += CellsOf((*rest)[end++]);
    const QStringView characters = rest->first(end);
    *rest = rest->sliced(end);
    return characters;
}

QString BlankHtml(QStringView answer, const QString &number, const SheetChoices &choices)
{
    const PrintSettings &print = choices.print;
    const int cells = CellsOf(answer);
    const double widthMm = RuleWidthMm(cells, print);
    const double neededMm = choices.isForTeacher ? qMax(widthMm, cells * print.points * MmPerPoint / 2) : widthMm;
    const int rules = int(std::ceil(neededMm / LongestRuleMm));
    // A browser draws rules of whole pixels, so that one could lack a quarter of a millimetre.
    const double px = widthMm / rules * PxPerMm;
    const bool isExact = print.blankWidth == BlankWidth::AsInText;
    const QString width = QString::number(isExact ? px : std::ceil(px - 0.001)) + u"px\">"_s;
    const QString opening = choices.isForTeacher ? u"<span class=\"rule told\" style=\"min-width:"_s + width
                                                 : u"<span class=\"rule\" style=\"width:"_s + width;
    QString html =
        u"<span class=\"blank\">"_s + (number.size() == 1 ? number : QString(u"<small>"_s + number + u"</small>"_s));
    int cellsBefore = 0;
    for (int rule = 1; rule <= rules; ++rule) {
        html += opening;
        if (choices.isForTeacher)
            html += Escaped(CharactersUpTo(double(cells) * rule / rules, &answer, &cellsBefore));
        html += rule == 1 ? u"</span></span>"_s : u"</span>"_s;
    }
    return html;
}

QString PictureHtml(const QString &url, const QString &name)
{
    return u"<img src=\""_s + url.toHtmlEscaped() + u"\" alt=\""_s + name.toHtmlEscaped() + u"\">"_s;
}

bool HoldsBlank(const std::vector<Replacement> &blanks, qsizetype start, qsizetype end)
{
    return std::ranges::any_of(blanks,
                               [&](const Replacement &blank) { return blank.start < end && start < blank.end; });
}

/// The references of a line that contain no blank: one that does stays, because it hides an answer.
std::vector<PictureReference> ShownReferences(const DisplayText &text, int line, const std::vector<Replacement> &blanks)
{
    if (!text.Line(line).contains(u'｢'))
        return {};
    std::vector<PictureReference> references = PictureReferences(text.MaskedLine(line));
    std::erase_if(references, [&blanks](const PictureReference &reference) {
        return HoldsBlank(blanks, reference.start, reference.start + reference.length);
    });
    return references;
}

/// Removes references to existing pictures from the end of a line; elsewhere, a sentence may need the name.
/// @return HTML of all pictures of the line
QString TakePictures(const DisplayText &text, int line, const PictureUrl &pictureUrl,
                     std::vector<Replacement> *replacements)
{
    QString pictures;
    const QStringView characters = text.Line(line);
    const std::vector<Replacement> blanks = *replacements;
    qsizetype textEnd = characters.size(); // end of the text that stays
    const std::vector<PictureReference> references = ShownReferences(text, line, blanks);
    for (auto reference = references.rbegin(); reference != references.rend(); ++reference) {
        const qsizetype start = reference->start;
        const qsizetype end = start + reference->length;
        const QString url = pictureUrl(reference->name);
        if (url.isEmpty())
            continue;
        pictures.prepend(PictureHtml(url, reference->name));
        if (end <= textEnd && !HoldsBlank(blanks, end, textEnd) &&
            characters.sliced(end, textEnd - end).trimmed().isEmpty()) {
            replacements->push_back({start, textEnd, QString()});
            textEnd = start;
        }
    }
    return pictures;
}

/// The characters of some blanks, brackets included, without HTML yet.
std::vector<Replacement> PlacesOf(const DisplayText &text, const std::vector<int> &blanks)
{
    std::vector<Replacement> places;
    for (const int blank : blanks) {
        const TextSpan span = text.Span(blank);
        places.push_back({span.Index(), span.Index() + span.length, QString()});
    }
    return places;
}

/// @param replacements  the blanks of the line
QString LineHtml(const DisplayText &text, int line, std::vector<Replacement> replacements, const PictureUrl &pictureUrl)
{
    const QStringView characters = text.Line(line);
    const QString pictures = TakePictures(text, line, pictureUrl, &replacements);
    std::ranges::sort(replacements, {}, &Replacement::start);
    QString html;
    qsizetype done = 0;
    for (const Replacement &each : replacements) {
        if (each.start < done)
            continue; // a reference inside another
        html += Escaped(characters.sliced(done, each.start - done)) + each.html;
        done = each.end;
    }
    html += Escaped(characters.sliced(done));
    if (pictures.isEmpty())
        return u"<div class=\"line\">"_s + html + u"</div>\n"_s;
    const QString above = html.trimmed().isEmpty() ? QString() : html;
    return u"<div class=\"line\">"_s + above + u"<div class=\"pictures\">"_s + pictures + u"</div></div>\n"_s;
}

QString EditionName(const SheetChoices &choices)
{
    return choices.isEditionB ? u"版 B"_s : u"版 A"_s;
}

/// A URL relative to the folder of the sheet, so that the application folder can be moved as a whole.
QString RelativeUrl(const QString &folder, const QString &path)
{
    const QString relative = QDir(folder).relativeFilePath(QDir::fromNativeSeparators(path));
    if (QDir::isAbsolutePath(relative)) // on another drive
        return QString::fromLatin1(QUrl::fromLocalFile(relative).toEncoded());
    return QString::fromLatin1(QUrl::toPercentEncoding(relative, "/"));
}

/// Finds the URLs of the pictures of a study file. The folder is listed and each picture looked at only once.
PictureUrl PicturesOf(const QString &studyFilePath, const QString &sheetPath)
{
    return [pictures = PictureFolder(PictureFolderOf(studyFilePath)), sheetFolder = QFileInfo(sheetPath).absolutePath(),
            urls = QHash<QString, QString>()](const QString &name) mutable {
        auto url = urls.find(name);
        if (url == urls.end()) {
            const QString path = pictures.Find(name);
            const bool isPicture = !path.isEmpty() && !PictureFormatOfFile(path).isEmpty();
            url = urls.insert(name, isPicture ? RelativeUrl(sheetFolder, path) : QString());
        }
        return *url;
    };
}

} // namespace

QString BlankNumber(int blank, int blanksOnSheet)
{
    constexpr struct
    {
        int number;
        char16_t character;
    } lasts[] = {{20, u'⑳'}, {35, u'㉟'}, {50, u'㊿'}}; // of the ranges of circled numbers
    for (const auto &last : lasts)
        if (blank <= last.number && blanksOnSheet <= std::rbegin(lasts)->number)
            return QChar(last.character - (last.number - blank));
    return u'(' + QString::number(blank) + u')';
}

double RuleWidthMm(int answerCells, const PrintSettings &print)
{
    const int cells = answerCells > 0 ? answerCells : CellsOfEmptyBlank;
    const double cellMm = print.points * MmPerPoint / 2;
    switch (print.blankWidth) {
    case BlankWidth::AsInText:
        return cells * cellMm;
    case BlankWidth::Double:
        return qMax(LeastWrittenMm, cells * qMax(2 * cellMm, WrittenCellMm));
    case BlankWidth::Equal:
        break;
    }
    return EqualWidthMm;
}

std::vector<int> EditionB(const std::vector<bool> &hasBlank)
{
    std::vector<int> order(hasBlank.size());
    std::iota(order.begin(), order.end(), 1);
    std::vector<size_t> places; // of lines with blanks
    for (size_t place = 0; place < hasBlank.size(); ++place)
        if (hasBlank[place])
            places.push_back(place);
    // Sattolo's algorithm, which leaves no line in its place. Not std::shuffle, whose order depends on the library.
    std::mt19937 random(1);
    for (size_t last = places.size(); last-- > 1;)
        std::swap(order[places[last]], order[places[random() % last]]);
    return order;
}

TextRefusal PrintSheet::Read(const QString &studyFilePath, const QString &sheetPath, const SheetChoices &choices)
{
    TextRefusal refusal = m_parts.Read(studyFilePath, MaxLineBytes);
    m_choices = choices;
    GoBack();
    m_onlyBlanks.reset();
    m_text = DisplayText();
    m_order.clear();
    m_missing = MissingPictures();
    if (!refusal && (choices.onlyHard || choices.isEditionB)) {
        m_text = DisplayText(m_parts.AllLines());
        if (choices.onlyHard)
            m_onlyBlanks = choices.onlyHard->Find(GetFileTitle(studyFilePath), m_text);
        if (choices.isEditionB) {
            std::vector<bool> hasBlank;
            for (int line = 1; line <= m_text.LineCount(); ++line)
                hasBlank.push_back(!AskedOn(m_text, line).empty());
            m_order = EditionB(hasBlank);
        } else
            m_text = DisplayText();
    }
    m_title = QFileInfo(studyFilePath).completeBaseName();
    m_pictureUrl = PicturesOf(studyFilePath, sheetPath);
    m_choices.print.withAnswers = choices.print.withAnswers && BlankCount() > 0;
    m_stage = Stage::Beginning;
    return refusal;
}

int PrintSheet::BlankCount() const
{
    return m_onlyBlanks ? int(m_onlyBlanks->size()) : m_parts.BlankCount();
}

int PrintSheet::PageCount() const
{
    const PrintSettings &print = m_choices.print;
    const int lines = m_onlyBlanks ? qMin(BlankCount(), m_parts.LineCount()) : m_parts.LineCount();
    return Pages(lines, LinesPerPage(print)) + (print.withAnswers ? Pages(BlankCount(), AnswersPerPage(print)) : 0);
}

bool PrintSheet::IsAsked(int blankInFile) const
{
    return !m_onlyBlanks || std::ranges::binary_search(*m_onlyBlanks, blankInFile);
}

/// The blanks of a line that the sheet asks for. @param text  part of the file after m_blanksBefore, or all of it
std::vector<int> PrintSheet::AskedOn(const DisplayText &text, int line) const
{
    std::vector<int> asked;
    for (const int blank : text.BlanksOnLine(line))
        if (IsAsked(m_blanksBefore + blank))
            asked.push_back(blank);
    return asked;
}

void PrintSheet::GoBack()
{
    m_parts.GoBack();
    m_place = 0;
    m_linesBefore = 0;
    m_blanksBefore = 0;
    m_lastNumber = 0;
}

bool PrintSheet::LookForPictures(const QDeadlineTimer &deadline)
{
    StudyLines lines;
    while (m_parts.Next(ExpandTabs::Yes, &lines)) {
        const DisplayText text(std::move(lines));
        for (int line = text.NextLineWith(u'｢', 1); line > 0; line = text.NextLineWith(u'｢', line + 1)) {
            const std::vector<int> asked = AskedOn(text, line);
            if (m_onlyBlanks && asked.empty())
                continue;
            for (const PictureReference &reference : ShownReferences(text, line, PlacesOf(text, asked))) {
                if (!m_pictureUrl(reference.name).isEmpty())
                    continue;
                if (++m_missing.count <= MaxMissingShown)
                    m_missing.first += QString::number(m_linesBefore + line) + u"行目："_s + NameInLine(reference.name);
            }
        }
        m_linesBefore += text.LineCount();
        m_blanksBefore += text.Blanks().Count();
        if (deadline.hasExpired())
            return true;
    }
    GoBack();
    return false;
}

QString PrintSheet::BeginningHtml() const
{
    const QString heading = m_title.toHtmlEscaped();
    const QString edition = EditionName(m_choices) + (m_choices.isForTeacher ? u"　先生用"_s : QString());
    const bool isUsual = !m_choices.isEditionB && !m_choices.isForTeacher;
    return u"<!DOCTYPE html>\n<html lang=\"ja\">\n<head>\n<meta charset=\"utf-8\">\n<title>"_s + heading +
           (isUsual ? QString() : QString(u'　' + edition)) + u"</title>\n<style>"_s + Style +
           StyleOf(m_choices.print) +
           u"</style>\n</head>\n<body>\n<p class=\"screen-only\">印刷は Ctrl+P（「ヘッダーとフッター」は外す）</p>\n<h1>"_s +
           heading + u"</h1>\n<p class=\"name\"><b>"_s + edition +
           u"</b>日付<span class=\"date\"></span>名前<span></span></p>\n<div class=\"lines\">\n"_s;
}

bool PrintSheet::Next(QByteArray *piece)
{
    QString html;
    if (m_stage == Stage::End)
        return false;
    if (m_stage == Stage::Beginning) {
        html = BeginningHtml();
        m_stage = Stage::Lines;
    } else if (NextLines(&html)) {
        // more lines, or answers
    } else if (m_stage == Stage::Lines && m_choices.print.withAnswers) {
        html = u"</div>\n<section class=\"answers\">\n<h2>"_s + m_title.toHtmlEscaped() + u"　正解（"_s +
               EditionName(m_choices) + u"）</h2>\n<div class=\"columns\">\n"_s;
        m_stage = Stage::Answers;
        GoBack();
    } else {
        html = (m_stage == Stage::Answers ? u"</div>\n</section>\n"_s : u"</div>\n"_s) + u"</body>\n</html>\n"_s;
        m_stage = Stage::End;
    }
    *piece = html.toUtf8();
    return true;
}

/// Goes on with the lines of the stage. @return false if there are no more
bool PrintSheet::NextLines(QString *html)
{
    constexpr size_t linesOfPiece = 256;
    if (m_choices.isEditionB) {
        const size_t end = qMin(m_place + linesOfPiece, m_order.size());
        if (m_place == end)
            return false;
        while (m_place < end)
            AddLine(m_text, m_order[m_place++], html);
        return true;
    }
    StudyLines lines;
    if (!m_parts.Next(ExpandTabs::Yes, &lines))
        return false;
    const DisplayText text(std::move(lines));
    for (int line = 1; line <= text.LineCount(); ++line)
        AddLine(text, line, html);
    m_blanksBefore += text.Blanks().Count();
    return true;
}

/// Adds a line, or its answers, if it is on the sheet.
void PrintSheet::AddLine(const DisplayText &text, int line, QString *html)
{
    const std::vector<int> asked = AskedOn(text, line);
    if (m_onlyBlanks && asked.empty())
        return;
    std::vector<Replacement> replacements = PlacesOf(text, asked);
    for (size_t i = 0; i < asked.size(); ++i) {
        const QString number = BlankNumber(++m_lastNumber, BlankCount());
        const QStringView answer = text.Answer(asked[i]);
        if (m_stage == Stage::Answers)
            *html += u"<div><b>"_s + number + u"</b>"_s + Escaped(answer) + u"</div>\n"_s;
        else
            replacements[i].html = BlankHtml(answer, number, m_choices);
    }
    if (m_stage == Stage::Lines)
        *html += LineHtml(text, line, std::move(replacements), m_pictureUrl);
}

double PrintSheet::Done() const
{
    const double done = m_choices.isEditionB && m_stage != Stage::Beginning && !m_order.empty()
                            ? double(m_place) / double(m_order.size())
                            : m_parts.Done();
    return m_choices.print.withAnswers ? (done + (m_stage >= Stage::Answers ? 1 : 0)) / 2 : done;
}

QString PrintSheetPath(const QString &folder, const QString &studyFilePath, const SheetChoices &choices)
{
    return JoinPath(folder, QFileInfo(studyFilePath).completeBaseName() + u"_印刷"_s +
                                (choices.isEditionB ? u"B"_s : QString()) +
                                (choices.isForTeacher ? u"_先生用"_s : QString()) + u".html"_s);
}

QString ManyPagesQuestion(const PrintSheet &sheet)
{
    return u"空欄が"_s + QString::number(sheet.BlankCount()) + u"個あり，印刷ページは約"_s +
           QString::number(sheet.PageCount()) +
           u"ページになります。\r\nブラウザで開くのに，長い時間がかかることがあります。\r\n\r\n印刷ページを作りますか？"_s;
}

QString MissingPicturesQuestion(const MissingPictures &missing)
{
    const int more = missing.count - int(missing.first.size());
    return u"次の図は，ファイルがないか，図として開けません。用紙には図の名前だけが残ります。\r\n    "_s +
           missing.first.join(u"\r\n    "_s) +
           (more > 0 ? QString(u"\r\n    ほかに"_s + QString::number(more) + u"個"_s) : QString()) +
           u"\r\n\r\n図がないまま，印刷ページを作りますか？"_s;
}

QString MissingPicturesRemark(const MissingPictures &missing)
{
    constexpr int mostNamed = 3;
    const int more = missing.count - mostNamed;
    return u"図がないか，開けません（"_s + missing.first.mid(0, mostNamed).join(u'，') +
           (more > 0 ? QString(u"，ほかに"_s + QString::number(more) + u"個"_s) : QString()) + u'）';
}

QString SheetNotOpenedMessage(const QString &sheetPath)
{
    return u"印刷ページを開けません。次のファイルをブラウザで開いて，印刷してください。\r\n  "_s + sheetPath;
}
