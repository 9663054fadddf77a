// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "files/MakeHardNote.h"

#include "files/modStudyFolder.h"
#include "widgets/frmMsg.h"
#include "widgets/frmWait.h"

using namespace Qt::Literals::StringLiterals;

std::optional<HardNote> MakeHardNote(frmMsg &msg, QWidget *owner, const MarkList &marks, const QString &studyFolder,
                                     const QString &reportFolder)
{
    StudyFolder folder(studyFolder);
    folder.Refresh();
    QStringList paths;
    for (const QString &name : folder.Names())
        paths += folder.PathOf(name);
    HardNote note(marks, paths);
    if (!frmWait(u"苦手帳を作っています。"_s, owner).Run(note))
        return std::nullopt;
    if (note.BlankCount() == 0) {
        msg.Refuse(owner, NothingHardMessage(note.MissingCount()));
        return std::nullopt;
    }
    if (const FileFault fault = note.Write(HardNotePath(reportFolder))) {
        msg.Refuse(owner, FaultMessage(u"苦手帳を書き込めません。"_s, fault));
        return std::nullopt;
    }
    return note;
}
