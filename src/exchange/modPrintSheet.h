// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// A study file as a sheet to be filled in by hand: an HTML page that the browser prints on A4 or saves as PDF. Each
// blank is a numbered underline as wide as the blank in the study window, so that columns stay aligned; the answers
// follow on a separate page.
#pragma once

#include "exchange/modPieceFile.h"
#include "text/modReadText.h"

#include <QString>

#include <functional>
#include <optional>
#include <vector>

class MarkList;

/// Label of blank number 1 or more: ① to ㊿, then (51), (52) ...
QString BlankNumber(int blank);

/// URL of the picture of a name; empty if there is none.
using PictureUrl = std::function<QString(const QString &name)>;

/// The sheet of a study file as pieces of HTML, without scripts, and without external resources other than the
/// pictures. These are referenced where they are, not copied. A picture is shown below the line that refers to it; a
/// reference at the end of the line is removed. A reference to a picture that does not exist stays as text.
class PrintSheet : public PieceMaker
{
  public:
    /// Reads a study file, once: what is printed is what was checked. Its name without ".txt" is the heading and the
    /// title of the page.
    /// @param sheetPath  where the page will be, for the URLs of the pictures
    /// @param withAnswers  whether to append the answers, if there are any blanks
    /// @param onlyHard  if given, only the blanks marked in it are asked for, numbered from 1, only their lines appear,
    /// and any other blanks in those lines show their answers as text
    TextRefusal Read(const QString &studyFilePath, const QString &sheetPath, bool withAnswers,
                     const MarkList *onlyHard = nullptr);

    /// Number of blanks that are asked for.
    int BlankCount() const;

    /// Estimated number of pages, answers included, as if no line were broken and there were no pictures.
    int PageCount() const;

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

    StudyParts m_parts;
    QString m_title;
    PictureUrl m_pictureUrl;
    bool m_withAnswers = false;
    std::optional<std::vector<int>> m_onlyBlanks; // ascending
    Stage m_stage = Stage::Beginning;
    int m_blanksBefore = 0; // number of blanks before the next part of the lines
};

/// A sheet with more blanks is written only after asking the user.
constexpr int MostBlanksUnasked = 100'000;

/// Full path of a study file's sheet: the file's name without ".txt", plus "_印刷.html".
QString PrintSheetPath(const QString &folder, const QString &studyFilePath);

/// Complete texts for the user, lines separated by CR LF.
QString ManyPagesQuestion(const PrintSheet &sheet); ///< to be asked above MostBlanksUnasked

/// The message for a sheet that the system could not open.
QString SheetNotOpenedMessage(const QString &sheetPath);
