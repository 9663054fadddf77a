// The printable copy of a study file: the same text with its answers blanked out, to be filled in by hand.
#pragma once

#include "text/modStudyLines.h"

/// A line with its brackets kept and every character inside them replaced: by "_" when it has one byte in code page
/// 932, by "＿" when it has two.
QString PrintableLine(QStringView line);

/// Full path of a study file's printable copy: the file's title and "_印刷用.txt", in the same folder.
QString PrintableCopyPath(const QString &folder, const QString &studyFilePath);

/// What a copy that is there already is, before it is replaced.
enum class OldCopy
{
    Replaceable, ///< none, or one that holds what would be written, or what cannot be replaced at all
    Outdated,    ///< older than the study file, and something else: it may have been changed by hand before that was
    Edited,      ///< newer than the study file, and something else: changed by hand, or that of another study file
    Unreadable,  ///< nobody can tell what it holds
};

OldCopy JudgeOldCopy(const QString &studyFilePath, const QString &copyPath);

/// Whether the user has to be asked before a copy is replaced.
inline bool MustAsk(OldCopy oldCopy)
{
    return oldCopy == OldCopy::Edited || oldCopy == OldCopy::Unreadable;
}

/// Writes the printable copy of a study file: code page 932, CR LF. A copy that is there already is replaced; an
/// outdated one is kept with ".bak" behind its name, in the place of the one that was kept before.
/// @param oldCopy  as it was judged
/// @return false after a fault, which message then holds: the reader's refusal, or that the copy cannot be written. A
/// copy that was there before is then still there, whole
bool WritePrintableCopy(const QString &studyFilePath, const QString &copyPath, QString *message,
                        OldCopy oldCopy = OldCopy::Replaceable);

/// The texts for the user, whole, their lines separated by CR LF.
QString ReplaceCopyQuestion(const QString &copyPath, OldCopy oldCopy); ///< where the user has to be asked
QString CopyMadeMessage(const QString &copyPath, OldCopy oldCopy);     ///< which file was made, and whether to open it
