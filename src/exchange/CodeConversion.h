// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Asks the questions of StudyFromText, and converts a file with them.
#pragma once

#include "platform/modSystemServices.h"
#include "settings/modEditor.h"

#include <QString>

class frmMsg;
class QWidget;
class StudyFromText;

/// Asks all questions that are due.
/// @param owner  parent window of the questions
/// @return false if one was closed without an answer, or the work was stopped; nothing is to be written then
bool AskQuestions(frmMsg &msg, QWidget *owner, StudyFromText *made);

/// Reports what was made, and offers to write in it. @return whether the user wants that
[[nodiscard]] bool OfferWriting(frmMsg &msg, QWidget *owner, const QString &report);

/// Converts a study file to Shift_JIS, keeping the old one, and reports what was done. Nothing is written until all
/// questions are answered. For a refused file it offers the editor.
/// @return whether the user wants to write in the converted file
[[nodiscard]] bool ConvertToShiftJis(SystemServices &services, frmMsg &msg, QWidget *owner, const Editor &editor,
                                     const QString &path);
