// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// A study file as a sheet to be filled in by hand: an HTML page that the browser prints on A4 or saves as PDF. Each
// blank is a numbered rule to write on; the answers follow on a separate page, or stand on the rules of a teacher's
// sheet.
#pragma once

#include "exchange/modPieceFile.h"
#include "settings/modSettings.h"
#include "text/modDisplayText.h"
#include "text/modReadText.h"

#include <QString>

#include <functional>
#include <optional>
#include <vector>

class MarkList;
class QDeadlineTimer;

/// What a sheet shows, beside its file.
struct SheetChoices
{
    PrintSettings print{};
    bool isForTeacher = false; ///< the answers are written on their rules, in red
    bool isEditionB = false;   ///< the lines with blanks are in another order, always the same for the same file
    /// If given, only the blanks marked in it are asked for, only their lines appear, and any other blanks in those
    /// lines show their answers as text.
    const MarkList *onlyHard = nullptr;
};

/// Label of blank number 1 or more: ① to ㊿, or (1), (2) ... on a sheet of more blanks than there are circled numbers.
QString BlankNumber(int blank, int blanksOnSheet);

/// Width of a blank's rule in millimetres. @param answerCells  width of the answer; an empty one gets room to write
double RuleWidthMm(int answerCells, const PrintSettings &print);

/// The lines of edition B by their places. Each of the lines with blanks is in the place of another, the last only if
/// it is the only one; all others stay. @param hasBlank  by line, from [0]
/// @return line numbers, 1-based
std::vector<int> EditionB(const std::vector<bool> &hasBlank);

/// URL of the picture of a name; empty if there is none, or only a file that is no picture by its first bytes.
using PictureUrl = std::function<QString(const QString &name)>;

/// References to pictures for which there is no URL.
struct MissingPictures
{
    int count = 0;
    QStringList first; ///< "3行目：図", at most MaxMissingShown
};

constexpr int MaxMissingShown = 20;

/// The sheet of a study file as pieces of HTML, without scripts, and without external resources other than the
/// pictures. These are referenced where they are, not copied. A picture is shown below the line that refers to it; a
/// reference at the end of the line is removed. A reference to a picture that does not exist stays as text.
class PrintSheet : public PieceMaker
{
  public:
    /// Reads a study file, once: what is printed is what was checked. Its name without ".txt" is the heading of the
    /// page.
    /// @param sheetPath  where the page will be, for the URLs of the pictures
    TextRefusal Read(const QString &studyFilePath, const QString &sheetPath, const SheetChoices &choices);

    /// Number of blanks that are asked for. They are numbered from 1 in the order of the sheet.
    int BlankCount() const;

    /// Estimated number of pages, answers included, as if no line were broken and there were no pictures.
    int PageCount() const;

    /// Looks for the pictures of the lines on the sheet until the deadline, all of it before the first piece is made.
    /// @return whether there is more to do
    bool LookForPictures(const QDeadlineTimer &deadline);

    /// How much it has looked through, from 0 to 1.
    double Looked() const
    {
        return m_parts.Done();
    }

    /// Pictures that LookForPictures has not found.
    const MissingPictures &Missing() const
    {
        return m_missing;
    }

    bool Next(QByteArray *piece) override;
    double Done() const override;

  private:
    enum class Stage
    {
        Beginning,
        Lines,
        Answers,
        End,
    };

    bool IsAsked(int blankInFile) const;
    std::vector<int> AskedOn(const DisplayText &text, int line) const;
    bool NextLines(QString *html);
    void AddLine(const DisplayText &text, int line, QString *html);
    QString BeginningHtml() const;
    void GoBack();

    StudyParts m_parts;
    QString m_title;
    SheetChoices m_choices;
    PictureUrl m_pictureUrl;
    std::optional<std::vector<int>> m_onlyBlanks; // ascending
    DisplayText m_text;                           // all lines, of edition B only
    std::vector<int> m_order;                     // of its lines
    size_t m_place = 0;                           // of the next line in that order
    Stage m_stage = Stage::Beginning;
    int m_linesBefore = 0;  // number of lines before the next part, while looking for pictures
    int m_blanksBefore = 0; // number of blanks before the next part
    int m_lastNumber = 0;   // of a blank on the sheet
    MissingPictures m_missing;
};

/// A sheet with more blanks is written only after asking the user.
constexpr int MostBlanksUnasked = 100'000;

/// Full path of a study file's sheet: the file's name without ".txt", plus "_印刷.html", or "_印刷B_先生用.html" for
/// edition B for the teacher: all sheets of a file can be open at the same time.
QString PrintSheetPath(const QString &folder, const QString &studyFilePath, const SheetChoices &choices = {});

/// Complete texts for the user, lines separated by CR LF.
QString ManyPagesQuestion(const PrintSheet &sheet); ///< to be asked above MostBlanksUnasked
QString MissingPicturesQuestion(const MissingPictures &missing);
QString MissingPicturesRemark(const MissingPictures &missing); ///< on one line, about one of several sheets

/// The message for a sheet that the system could not open.
QString SheetNotOpenedMessage(const QString &sheetPath);
