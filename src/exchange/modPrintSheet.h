// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// A study file as a sheet to be filled in by hand: an HTML page that the browser prints on A4 or saves as PDF. Each
// blank is a numbered underline as wide as the blank in the study window, so that columns stay aligned; the answers
// follow on a separate page.
#pragma once

#include "text/modDisplayText.h"

#include <QString>

#include <functional>
#include <optional>
#include <vector>

class MarkList;

/// Label of blank number 1 or more: ① to ㊿, then (51), (52) ...
QString BlankNumber(int blank);

/// The sheet as HTML, without scripts, and without external resources other than the pictures. A picture is shown below
/// the line that refers to it; a reference at the end of the line is removed.
/// @param title  heading and title of the page
/// @param pictureUrl  URL of the picture of a name; empty if there is none, and then the reference stays as text
/// @param withAnswers  whether to append the answers, if there are any blanks
/// @param onlyBlanks  ascending; if given, only these are asked for, numbered from 1, only their lines appear, and any
/// other blanks in those lines show their answers as text
QString PrintSheetHtml(const QString &title, const DisplayText &text,
                       const std::function<QString(const QString &name)> &pictureUrl, bool withAnswers,
                       const std::optional<std::vector<int>> &onlyBlanks = {});

/// Full path of a study file's sheet: the file's name without ".txt", plus "_印刷.html".
QString PrintSheetPath(const QString &folder, const QString &studyFilePath);

/// Writes the sheet of a study file, replacing an existing one. Pictures are referenced where they are, not copied.
/// @param onlyHard  if given, the sheet asks only for the blanks marked in it
/// @return false after a fault, which message then holds: the study file cannot be read, or the sheet not written. An
/// existing sheet is then unchanged
bool WritePrintSheet(const QString &studyFilePath, const QString &sheetPath, bool withAnswers, QString *message,
                     const MarkList *onlyHard = nullptr);

/// Complete message for a sheet that the system could not open.
QString SheetNotOpenedMessage(const QString &sheetPath);
