// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Conversion of a study file to Shift_JIS: which files it is offered for, its messages, and how the file is replaced.
// CodeConversion asks the questions.
#pragma once

#include "base/modFile.h"
#include "exchange/modBreakLines.h"
#include "exchange/modConvertText.h"
#include "text/modReadText.h"

#include <QByteArray>
#include <QString>

/// Whether files in an encoding can be converted. @param codeName  as CharCodeName gives it
bool CanConvertFrom(const QString &codeName);

/// Whether a file with these remarks in the list can be converted.
bool CanConvert(const QString &remarks);

/// Whether bytes detected as EUC are valid Shift_JIS too, as half-width kana are.
bool ReadsAsShiftJis(const QByteArray &bytes);

/// A converted text as the bytes of a study file.
/// @return a refusal without a message if such a file would be refused as a whole, for its size or because it would be
/// detected as another encoding
TextRefusal EncodeStudyText(const QString &text, QByteArray *bytes);

/// Replaces a file by its converted contents and keeps the old file under a free name. The backup is on the disk before
/// the file is replaced.
/// @param before  contents of the file when it was read; if it has changed since, nothing is written
/// @param backupPath  receives the path of the backup
/// @return a fault after which the folder is unchanged
FileFault ReplaceConverted(const QString &path, const QByteArray &before, const QByteArray &converted,
                           QString *backupPath);

/// An unwritable character as messages show it: "é（U+00E9）", because the font may lack it.
QString NameOfUnwritable(char32_t character);

/// Closing part of a message: which characters were replaced and how many accents removed; empty if none were.
QString ReplacedRemarks(const ConvertedText &converted);

/// Complete texts for the user, lines separated by CR LF.
/// @param title  of the file, as GetFileTitle gives it
QString NoTextFileMessage(const QString &title);
QString NotConvertibleMessage(const QString &title, const QString &codeName);
QString EucOrShiftJisQuestion(const QString &title, const QString &asEuc, const QString &asShiftJis);
QString OpenAsShiftJisQuestion();
QString AccentsQuestion(const ConvertedText &converted);
QString UnwritableQuestion(const ConvertedText &converted);
QString BracketsQuestion();
QString LongLinesQuestion(const BrokenLines &lines, int maxLineBytes);
QString NotEncodedMessage(const TextRefusal &refusal); ///< of EncodeStudyText

/// @param unbreakableLine  1-based line that is still too long; 0 if there is none
QString ConvertedMessage(const QString &path, const QString &backupPath, const QString &codeName,
                         const ConvertedText &converted, int unbreakableLine);
