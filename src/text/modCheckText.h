// The checks that every line of a study file passes before it is laid out. Each takes the lines with their tabs
// expanded and stops at the first line that fails; the message then quotes that line, and errorLine is its 1-based
// number. On success the message is left empty.
#pragma once

#include "text/modStudyLines.h"

/// Longest line of a study file, in bytes of code page 932.
constexpr int MaxLineBytes = 100;

/// Whether no line is longer than maxLineBytes bytes of code page 932.
bool CheckLineBytes(const StudyLines &lines, int maxLineBytes, QString *message, int *errorLine);

/// Whether every line has as many "[" as "]". Full-width brackets are ordinary text.
bool CheckBracketCount(const StudyLines &lines, QString *message, int *errorLine);

/// Whether on every line "[" and "]" take turns, "[" first. Relies on CheckBracketCount.
bool CheckBracketOrder(const StudyLines &lines, QString *message, int *errorLine);

/// How often a character occurs in a text.
qsizetype CountString(QStringView text, QChar character);

/// Whether a line has as many "[" as "]".
bool IsBracketCountEqual(QStringView line);

/// Whether the brackets of a line with as many "[" as "]" take turns, without nesting and without a stray "]".
bool IsBracketOrderValid(QStringView line);

/// The messages of the three checks, whole.
QString LineTooLongMessage(int maxLineBytes, int line, qsizetype byteCount, QStringView text);
QString BracketCountMessage(int line, QStringView text);
QString BracketOrderMessage(int line, QStringView text);
