// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The printable copy of a study file: its text with the answers replaced by underscores, to be filled in by hand.
#pragma once

#include "base/modFile.h"
#include "text/modReadText.h"

class QDeadlineTimer;

/// A line with every character inside its brackets replaced: by "_" if it has one byte in code page 932, by "＿" if it
/// has two.
QString PrintableLine(QStringView line);

/// Full path of a study file's printable copy in a folder: the file's title plus "_印刷用.txt".
QString PrintableCopyPath(const QString &folder, const QString &studyFilePath);

/// State of an existing copy that is about to be replaced.
enum class OldCopy
{
    Replaceable, ///< none, or identical to the new copy, or impossible to replace at all
    Outdated,    ///< older than the study file and different; may have been edited before the study file changed
    Edited,      ///< newer than the study file and different: edited by hand, or made from another study file
    Unreadable,  ///< its contents are unknown
};

/// Makes the printable copy of a study file, in code page 932 with CR LF, in slices.
class PrintableCopy
{
  public:
    /// Reads the study file.
    TextRefusal Read(const QString &studyFilePath);

    /// Goes on until the deadline. @return whether there is more to do
    bool GoOn(const QDeadlineTimer &deadline);

    /// How much has been made, from 0 to 1.
    double Done() const
    {
        return m_parts.Done();
    }

    /// The copy, once it is complete.
    const QByteArray &Bytes() const
    {
        return m_bytes;
    }

  private:
    StudyParts m_parts;
    QByteArray m_bytes;
};

/// @param bytes  the new copy
OldCopy JudgeOldCopy(const QByteArray &bytes, const QString &studyFilePath, const QString &copyPath);

/// Whether the user must be asked before a copy is replaced.
inline bool MustAsk(OldCopy oldCopy)
{
    return oldCopy == OldCopy::Edited || oldCopy == OldCopy::Unreadable;
}

/// Writes a printable copy, replacing an existing one. An outdated one is kept with ".bak" appended to its name,
/// replacing an earlier backup. After a fault an existing copy is unchanged.
/// @param oldCopy  result of JudgeOldCopy
FileFault WritePrintableCopy(const QByteArray &bytes, const QString &copyPath, OldCopy oldCopy);

/// Complete texts for the user, lines separated by CR LF.

/// To be asked if MustAsk. Names the other study files, if any, whose copies have the same name, because the old copy
/// may have been made from one of them.
QString ReplaceCopyQuestion(const QString &studyFilePath, const QString &copyPath, OldCopy oldCopy);
QString CopyMadeMessage(const QString &copyPath, OldCopy oldCopy); ///< names the new file and offers to open it
