// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Mends study files, "ファイルを直す": converts them to Shift_JIS and changes what keeps them from being studied, as
// the user chooses in frmMend.
#pragma once

#include "platform/modSystemServices.h"
#include "settings/modEditor.h"

#include <QStringList>

class StudyFromText;
class frmMsg;
class QWidget;

/// Lists the faults of a text, lets the user choose what becomes of them if there are any, and makes the study file.
/// @param owner  parent window of what is shown
/// @return false if that was cancelled; nothing is to be written then
[[nodiscard]] bool MakeAsChosen(frmMsg &msg, QWidget *owner, const QString &name, StudyFromText *made);

/// Reports what was made, and offers to write in it. @return whether the user wants that
[[nodiscard]] bool OfferWriting(frmMsg &msg, QWidget *owner, const QString &report);

/// What has come of mending.
enum class MendOutcome
{
    Nothing,     ///< no file was changed
    Done,        ///< at least one was
    ToBeWritten, ///< the only one was, and the user wants to write in it
};

/// Mends study files, keeping the old ones, and reports once what was done. Nothing is written until the user has
/// chosen, once for all files. For a single file that stays refused it offers the editor.
[[nodiscard]] MendOutcome MendFiles(SystemServices &services, frmMsg &msg, QWidget *owner, const Editor &editor,
                                    const QStringList &paths);
