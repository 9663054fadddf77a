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
