// Converting a study file to Shift_JIS: which files it is offered for, what is said of it, and how the file is
// replaced. The asking is CodeConversion's.
#pragma once

#include "text/modBreakLines.h"
#include "text/modConvertText.h"

#include <QByteArray>
#include <QString>

/// Whether a file can be converted from a character code, by its name as the detection gives it.
bool CanConvertFrom(const QString &codeName);

/// Whether a file with these remarks in the list can be converted.
bool CanConvert(const QString &remarks);

/// Whether the bytes of a file that was taken for EUC are Shift_JIS just as well, as those of half-width kana are.
bool ReadsAsShiftJis(const QByteArray &bytes);

/// A converted text as the bytes of a study file.
/// @return false when such a file would be refused as a whole, for its size or because the detection would take it for
/// another character code; message then holds the whole of it for the user
bool EncodeConverted(const QString &text, QByteArray *bytes, QString *message);

/// Puts the converted file in the place of the old one, and keeps that under a free name. The old bytes are on the disk
/// under that name before the file is replaced.
/// @param before  what the file held when it was read; when it holds anything else now, nothing is written
/// @param backupPath  where the old file is kept
/// @return false on failure; message then holds the whole of it for the user, and the folder is as it was
bool ReplaceConverted(const QString &path, const QByteArray &before, const QByteArray &converted, QString *backupPath,
                      QString *message);

/// What a message calls a character that is not written: "é（U+00E9）", as the fonts here may lack it.
QString NameOfUnwritable(char32_t character);

/// The end of a message that tells which characters were replaced and how many accents went; empty when none were.
QString ReplacedRemarks(const ConvertedText &converted);

/// The texts for the user, whole, their lines separated by CR LF.
/// @param title  of the file, as GetFileTitle gives it
QString NoTextFileMessage(const QString &title);
QString NotConvertibleMessage(const QString &title, const QString &codeName);
QString EucOrShiftJisQuestion(const QString &title, const QString &asEuc, const QString &asShiftJis);
QString OpenAsShiftJisQuestion();
QString AccentsQuestion(const ConvertedText &converted);
QString UnwritableQuestion(const ConvertedText &converted);
QString BracketsQuestion();
QString LongLinesQuestion(const BrokenLines &lines, int maxLineBytes);

/// @param unbreakableLine  1-based line that is still too long, 0 when there is none
QString ConvertedMessage(const QString &path, const QString &backupPath, const QString &codeName,
                         const ConvertedText &converted, int unbreakableLine);
