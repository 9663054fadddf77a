// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/modPrintSheet.h"

#include "base/modFile.h"
#include "platform/modReplaceFile.h"
#include "records/modHardNote.h"
#include "text/modCheckText.h"
#include "text/modPictureName.h"
#include "text/modReadText.h"

#include <QDir>
#include <QFileInfo>
#include <QUrl>

#include <algorithm>
#include <utility>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace {

// In these fonts, half-width letters are exactly half as wide as full-width ones. A number takes the two cells of the
// brackets; one of several characters is slightly wider. An underline too wide for the page ends at its edge. Browsers
// without margin boxes leave out the page number.
constexpr QStringView Style = uR"(
@page { size: A4; margin: 18mm 15mm 20mm;
  @bottom-center { content: counter(page) " / " counter(pages); font: 10pt sans-serif; } }
html { color-scheme: light; }
body { margin: 0; color: #000; overflow-wrap: anywhere;
  font: 12pt/1.7 "BIZ UDGothic", "MS Gothic", "Osaka-Mono", "Hiragino Sans", "Noto Sans Mono CJK JP", "IPAGothic",
    monospace; }
h1, h2 { margin: 0 0 .5em; font-size: 15pt; line-height: 1.4; break-after: avoid; }
.name { margin: 0 0 1.5em; text-align: right; }
.name span { display: inline-block; width: 13em; border-bottom: 1px solid; margin: 0 1em 0 .5em; }
.name .date { width: 7em; }
.line { min-height: 1.7em; white-space: pre-wrap; break-inside: avoid; padding-left: 2em; text-indent: -2em; }
.blank { white-space: nowrap; }
.blank small { font-size: .8em; }
.blank span { display: inline-block; box-sizing: border-box; height: 1.2em; max-width: calc(100% - 5em);
  border-bottom: 1px solid; vertical-align: -.2em; }
.pictures { text-indent: 0; }
img { max-width: 100%; max-height: 80mm; margin: .3em 1em .3em 0; vertical-align: top; }
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
  .screen-only { margin: -10mm 0 2em; padding: .3em 1em; color: #000; background: #fff3c4; }
  .answers { margin-top: 3em; border-top: 1px dashed; padding-top: 2em; }
}
@media screen and (prefers-color-scheme: dark) { html { background: #000; } }
)";

constexpr int CellsOfEmptyBlank = 4; // leaves room to write

// What the style below the margins of an A4 page has room for: lines of 20.4 pt, and three columns of answers of 18 pt.
constexpr int LinesPerPage = 35;
constexpr int AnswersPerPage = 3 * 40;

int Pages(int count, int perPage)
{
    return count / perPage + (count % perPage > 0);
}

/// The blanks that a sheet asks for in a part of its file, and their numbers on the sheet.
class AskedBlanks
{
  public:
    /// @param before  number of blanks before the part
    AskedBlanks(const std::optional<std::vector<int>> &only, int before) : m_only(only), m_before(before) {}

    /// The number on the sheet of a blank of the part; 0 if it is not asked for.
    int NumberOf(int blank) const
    {
        const int inFile = m_before + blank;
        if (!m_only)
            return inFile;
        const auto found = std::ranges::lower_bound(*m_only, inFile);
        return found != m_only->end() && *found == inFile ? int(found - m_only->begin()) + 1 : 0;
    }

    /// Whether a line is on the sheet.
    bool HasLine(const BlankRange &blanks) const
    {
        return !m_only || std::ranges::any_of(blanks, [this](int blank) { return NumberOf(blank) > 0; });
    }

  private:
    const std::optional<std::vector<int>> &m_only;
    int m_before;
};

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

QString BlankHtml(const DisplayText &text, const AskedBlanks &asked, int blank)
{
    const int answerCells = CellsOf(text.Answer(blank));
    const int cells = answerCells > 0 ? answerCells : CellsOfEmptyBlank;
    const QString number = BlankNumber(asked.NumberOf(blank));
    return u"<span class=\"blank\">"_s +
           (number.size() == 1 ? number : QString(u"<small>"_s + number + u"</small>"_s)) + u"<span style=\"width:"_s +
           QString::number(cells / 2.0) + u"em\"></span></span>"_s;
}

QString PictureHtml(const QString &url, const QString &name)
{
    return u"<img src=\""_s + url.toHtmlEscaped() + u"\" alt=\""_s + name.toHtmlEscaped() + u"\">"_s;
}

/// Removes references to existing pictures from the end of a line; elsewhere, a sentence may need the name. A reference
/// that contains a blank stays, because it hides an answer.
/// @return HTML of all pictures of the line
QString TakePictures(const DisplayText &text, int line, const PictureUrl &pictureUrl,
                     std::vector<Replacement> *replacements)
{
    QString pictures;
    const QStringView characters = text.Line(line);
    if (!characters.contains(u'｢'))
        return pictures;
    const std::vector<Replacement> blanks = *replacements;
    const auto holdsBlank = [&blanks](qsizetype start, qsizetype end) {
        return std::ranges::any_of(blanks,
                                   [&](const Replacement &blank) { return blank.start < end && start < blank.end; });
    };
    qsizetype textEnd = characters.size(); // end of the text that stays
    const std::vector<PictureReference> references = PictureReferences(text.MaskedLine(line));
    for (auto reference = references.rbegin(); reference != references.rend(); ++reference) {
        const qsizetype start = reference->start;
        const qsizetype end = start + reference->length;
        const QString url = holdsBlank(start, end) ? QString() : pictureUrl(reference->name);
        if (url.isEmpty())
            continue;
        pictures.prepend(PictureHtml(url, reference->name));
        if (end <= textEnd && !holdsBlank(end, textEnd) && characters.sliced(end, textEnd - end).trimmed().isEmpty()) {
            replacements->push_back({start, textEnd, QString()});
            textEnd = start;
        }
    }
    return pictures;
}

QString LineHtml(const DisplayText &text, const AskedBlanks &asked, int line, const PictureUrl &pictureUrl)
{
    const QStringView characters = text.Line(line);
    std::vector<Replacement> replacements;
    for (const int blank : text.BlanksOnLine(line)) {
        const qsizetype start = text.Span(blank).Index();
        if (asked.NumberOf(blank) > 0)
            replacements.push_back({start, start + text.Span(blank).length, BlankHtml(text, asked, blank)});
    }
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

QString LinesHtml(const DisplayText &text, const AskedBlanks &asked, const PictureUrl &pictureUrl)
{
    QString html;
    for (int line = 1; line <= text.LineCount(); ++line)
        if (asked.HasLine(text.BlanksOnLine(line)))
            html += LineHtml(text, asked, line, pictureUrl);
    return html;
}

QString AnswersHtml(const DisplayText &text, const AskedBlanks &asked)
{
    QString html;
    for (int blank = 1; blank <= text.Blanks().Count(); ++blank)
        if (const int number = asked.NumberOf(blank); number > 0)
            html += u"<div><b>"_s + BlankNumber(number) + u"</b>"_s + Escaped(text.Answer(blank)) + u"</div>\n"_s;
    return html;
}

QString BeginningHtml(const QString &title)
{
    const QString heading = title.toHtmlEscaped();
    return u"<!DOCTYPE html>\n<html lang=\"ja\">\n<head>\n<meta charset=\"utf-8\">\n<title>"_s + heading +
           u"</title>\n<style>"_s + Style +
           u"</style>\n</head>\n<body>\n<p class=\"screen-only\">印刷は Ctrl+P（「ヘッダーとフッター」は外す）</p>\n<h1>"_s +
           heading + u"</h1>\n<p class=\"name\">日付<span class=\"date\"></span>名前<span></span></p>\n"_s;
}

QString BeginningOfAnswersHtml(const QString &title)
{
    return u"<section class=\"answers\">\n<h2>"_s + title.toHtmlEscaped() + u"　正解</h2>\n<div class=\"columns\">\n"_s;
}

/// A URL relative to the folder of the sheet, so that the application folder can be moved as a whole.
QString RelativeUrl(const QString &folder, const QString &path)
{
    const QString relative = QDir(folder).relativeFilePath(QDir::fromNativeSeparators(path));
    if (QDir::isAbsolutePath(relative)) // on another drive
        return QString::fromLatin1(QUrl::fromLocalFile(relative).toEncoded());
    return QString::fromLatin1(QUrl::toPercentEncoding(relative, "/"));
}

/// Finds the URLs of the pictures of a study file. The folder is listed only once.
PictureUrl PicturesOf(const QString &studyFilePath, const QString &sheetPath)
{
    return [pictures = PictureFolder(PictureFolderOf(studyFilePath)),
            sheetFolder = QFileInfo(sheetPath).absolutePath()](const QString &name) {
        const QString path = pictures.Find(name);
        return path.isEmpty() ? QString() : RelativeUrl(sheetFolder, path);
    };
}

} // namespace

QString BlankNumber(int blank)
{
    constexpr struct
    {
        int number;
        char16_t character;
    } lasts[] = {{20, u'⑳'}, {35, u'㉟'}, {50, u'㊿'}}; // of the ranges of circled numbers
    for (const auto &last : lasts)
        if (blank <= last.number)
            return QChar(last.character - (last.number - blank));
    return u'(' + QString::number(blank) + u')';
}

TextRefusal PrintSheet::Read(const QString &studyFilePath, const QString &sheetPath, bool withAnswers,
                             const MarkList *onlyHard)
{
    const TextRefusal refusal = m_parts.Read(studyFilePath, MaxLineBytes);
    m_onlyBlanks.reset();
    if (!refusal && onlyHard)
        m_onlyBlanks = onlyHard->Find(GetFileTitle(studyFilePath), DisplayText(m_parts.AllLines()));
    m_title = QFileInfo(studyFilePath).completeBaseName();
    m_pictureUrl = PicturesOf(studyFilePath, sheetPath);
    m_withAnswers = withAnswers && BlankCount() > 0;
    m_stage = Stage::Beginning;
    m_blanksBefore = 0;
    return refusal;
}

int PrintSheet::BlankCount() const
{
    return m_onlyBlanks ? int(m_onlyBlanks->size()) : m_parts.BlankCount();
}

int PrintSheet::PageCount() const
{
    const int lines = m_onlyBlanks ? qMin(BlankCount(), m_parts.LineCount()) : m_parts.LineCount();
    return Pages(lines, LinesPerPage) + (m_withAnswers ? Pages(BlankCount(), AnswersPerPage) : 0);
}

bool PrintSheet::Next(QByteArray *piece)
{
    QString html;
    StudyLines lines;
    if (m_stage == Stage::End)
        return false;
    if (m_stage == Stage::Beginning) {
        html = BeginningHtml(m_title);
        m_stage = Stage::Lines;
    } else if (m_parts.Next(ExpandTabs::Yes, &lines)) {
        const DisplayText text(std::move(lines));
        const AskedBlanks asked(m_onlyBlanks, m_blanksBefore);
        html = m_stage == Stage::Lines ? LinesHtml(text, asked, m_pictureUrl) : AnswersHtml(text, asked);
        m_blanksBefore += text.Blanks().Count();
    } else if (m_stage == Stage::Lines && m_withAnswers) {
        html = BeginningOfAnswersHtml(m_title);
        m_stage = Stage::Answers;
        m_parts.GoBack();
        m_blanksBefore = 0;
    } else {
        html = (m_withAnswers ? u"</div>\n</section>\n"_s : QString()) + u"</body>\n</html>\n"_s;
        m_stage = Stage::End;
    }
    *piece = html.toUtf8();
    return true;
}

double PrintSheet::Done() const
{
    if (!m_withAnswers)
        return m_parts.Done();
    return (m_parts.Done() + (m_stage >= Stage::Answers ? 1 : 0)) / 2;
}

QString PrintSheetPath(const QString &folder, const QString &studyFilePath)
{
    return JoinPath(folder, QFileInfo(studyFilePath).completeBaseName() + u"_印刷.html"_s);
}

QString ManyPagesQuestion(const PrintSheet &sheet)
{
    return u"空欄が"_s + QString::number(sheet.BlankCount()) + u"個あり，印刷ページは約"_s +
           QString::number(sheet.PageCount()) +
           u"ページになります。\r\nブラウザで開くのに，長い時間がかかることがあります。\r\n\r\n印刷ページを作りますか？"_s;
}

QString SheetNotOpenedMessage(const QString &sheetPath)
{
    return u"印刷ページを開けません。次のファイルをブラウザで開いて，印刷してください。\r\n  "_s + sheetPath;
}
