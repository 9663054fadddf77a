// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The checks that a study file must pass before it is laid out. Each expects lines with expanded tabs and stops at the
// first line that fails; message then quotes that line, and errorLine is its 1-based number. On success both are left
// as they were.
#pragma once

#include "text/modStudyLines.h"

/// Longest line of a study file, in bytes of code page 932.
constexpr int MaxLineBytes = 100;

/// Whether no line is longer than maxLineBytes bytes of code page 932.
bool CheckLineBytes(const StudyLines &lines, int maxLineBytes, QString *message, int *errorLine);

/// Whether every line has equal numbers of "[" and "]". Full-width brackets are ordinary text.
bool CheckBracketCount(const StudyLines &lines, QString *message, int *errorLine);

/// Whether "[" and "]" alternate on every line, "[" first. Requires that CheckBracketCount has passed.
bool CheckBracketOrder(const StudyLines &lines, QString *message, int *errorLine);

/// Length of a line in bytes of code page 932 when it is read, each tab counting as the two spaces that replace it.
qsizetype LineBytes(QStringView line);

/// Number of occurrences of a character in a text.
qsizetype CountString(QStringView text, QChar character);

/// Whether a line has equal numbers of "[" and "]".
bool IsBracketCountEqual(QStringView line);

/// Whether the brackets of a line with equal numbers of "[" and "]" alternate, without nesting or a stray "]".
bool IsBracketOrderValid(QStringView line);

/// The complete messages of the three checks.
QString LineTooLongMessage(int maxLineBytes, int line, qsizetype byteCount, QStringView text);
QString BracketCountMessage(int line, QStringView text);
QString BracketOrderMessage(int line, QStringView text);
