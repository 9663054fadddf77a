// A study file as a sheet to be filled in by hand: a page for the browser, which prints it on A4 or saves it as PDF.
// Each blank is a numbered underline that takes as many cells as the blank does in the study window, so that columns
// stay in line; the answers follow on a page of their own.
#pragma once

#include "text/modDisplayText.h"

#include <QString>

#include <functional>
#include <optional>
#include <vector>

class MarkList;

/// The number of a blank, 1 or more: ① to ㊿, then (51), (52) ...
QString BlankNumber(int blank);

/// The sheet as HTML without scripts and without anything from elsewhere but the pictures. A picture stands below the
/// line that refers to it, and a reference at the end of a line goes.
/// @param title  heading and title of the page
/// @param pictureUrl  URL of the picture of a name; empty when there is none, and then the reference stays as text
/// @param withAnswers  whether the answers follow; where there are no blanks they never do
/// @param onlyBlanks  ascending; without them all are asked. Else only they are, numbered from 1, and only their lines
/// are there, in which the answers of other blanks stand as text
QString PrintSheetHtml(const QString &title, const DisplayText &text,
                       const std::function<QString(const QString &name)> &pictureUrl, bool withAnswers,
                       const std::optional<std::vector<int>> &onlyBlanks = {});

/// Full path of a study file's sheet: the file's name without ".txt", and "_印刷.html".
QString PrintSheetPath(const QString &folder, const QString &studyFilePath);

/// Writes the sheet of a study file, whose pictures it shows from where they are. A sheet that is there already is
/// replaced.
/// @param onlyHard  only what is marked in it is asked; without it all is
/// @return false after a fault, which message then holds: the reader's refusal, or that the sheet cannot be written. A
/// sheet that was there before is then still there, whole
bool WritePrintSheet(const QString &studyFilePath, const QString &sheetPath, bool withAnswers, QString *message,
                     const MarkList *onlyHard = nullptr);

/// The message about a sheet that the system has no program for, whole.
QString SheetNotOpenedMessage(const QString &sheetPath);
