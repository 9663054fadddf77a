// The printable copy of a study file: the same text with its answers blanked out, to be filled in by hand.
#pragma once

#include "text/modStudyLines.h"

/// A line with its brackets kept and every character inside them replaced: by "_" when it has one byte in code page
/// 932, by "＿" when it has two.
QString PrintableLine(QStringView line);

/// Full path of a study file's printable copy: the file's title and "_印刷用.txt", in the same folder.
QString PrintableCopyPath(const QString &folder, const QString &studyFilePath);

/// Writes the printable copy of a study file: code page 932, CR LF. A copy that is there already is replaced.
/// @return false after a fault, which message then holds: the reader's refusal, or that the copy cannot be written. A
/// copy that was there before is then still there, whole
bool WritePrintableCopy(const QString &studyFilePath, const QString &copyPath, QString *message);

/// Whether a printable copy was changed by hand, as far as that can be told: it is newer than its study file and holds
/// something else than is written for that now. False where there is no copy, or no study file that can be read.
bool IsCopyEdited(const QString &studyFilePath, const QString &copyPath);

/// The texts for the user, whole, their lines separated by CR LF.
QString ReplaceCopyQuestion(const QString &copyPath); ///< for a copy that was changed by hand
QString CopyMadeMessage(const QString &copyPath);     ///< which file was made, and whether to open it
