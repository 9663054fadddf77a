// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Makes the note of hard words, for the windows in which it is opened, printed or read again.
#pragma once

#include "records/modHardNote.h"

#include <optional>

class QWidget;
class frmMsg;

/// Writes the note of a user afresh. Reading many study files shows how far it is and can be stopped.
/// @param owner  of what is shown
/// @param studyFolder  of the study files
/// @return nothing if none was written; the user knows why. An earlier one is then unchanged.
std::optional<HardNote> MakeHardNote(frmMsg &msg, QWidget *owner, const MarkList &marks, const QString &studyFolder,
                                     const QString &reportFolder);
