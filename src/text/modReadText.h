// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Reads a text file into lines, or refuses it because of its size, its encoding or, in a study file, one of its lines.
// All callers that may refuse a text use these functions and build their own messages from the TextRefusal.
#pragma once

#include "base/modFile.h"
#include "text/modStudyLines.h"

#include <QByteArray>

/// Why a text file is refused, in the order of the checks.
enum class TextFault
{
    None,
    TooLarge,
    Unreadable,
    WrongCharCode,
    LineTooLong, ///< this and the following only in study files
    BracketCount,
    BracketOrder,
};

/// Result of reading a file; true if the file is refused. It includes the message, because some messages quote lines,
/// which are not kept.
struct [[nodiscard]] TextRefusal
{
    TextFault fault = TextFault::None;
    int line = 0;       ///< 1-based line at fault; 1 if the file is refused as a whole; 0 if there is no fault
    QString charCode{}; ///< WrongCharCode: name of the detected encoding
    QString text{};     ///< a fault of a line: that line, with tabs expanded
    QString message{};  ///< complete text for the user, lines separated by CR LF; empty if there is no fault

    explicit operator bool() const
    {
        return fault != TextFault::None;
    }
};

/// Whether every tab is replaced by two spaces while reading.
enum class ExpandTabs : bool
{
    No,
    Yes,
};

/// Reads any text file in ASCII or code page 932.
/// @param lines  empty after a refusal
/// @param maxBytes  a larger file is not even opened; the message for it gives MaxFileBytes as the limit
TextRefusal ReadText(const QString &path, ExpandTabs expandTabs, StudyLines *lines, qint64 maxBytes = MaxFileBytes);

/// Reads a study file, expands its tabs and runs the checks of modCheckText up to the first fault. The file is read
/// only once, so what is shown is exactly what was checked.
/// @param maxLineBytes  longest line allowed, in bytes of code page 932 after tab expansion
/// @param lines  empty after a refusal
/// @param bytes  if given, receives the contents of the file, also after a refusal for what is in it; undefined after
/// one for its size or because it cannot be read
TextRefusal ReadStudyText(const QString &path, int maxLineBytes, StudyLines *lines, QByteArray *bytes = nullptr);

/// A study file as bytes that are decoded part by part, for work that goes through all lines in order. The lines as a
/// whole take several times the memory of the file.
class StudyParts
{
  public:
    /// Reads and checks a file as ReadStudyText does.
    TextRefusal Read(const QString &path, int maxLineBytes);

    int LineCount() const
    {
        return m_lineCount;
    }

    int BlankCount() const
    {
        return m_blankCount;
    }

    /// Decodes the next lines, which takes a millisecond or two.
    /// @return false if there are no more lines
    bool Next(ExpandTabs expandTabs, StudyLines *lines);

    /// Makes Next begin again with the first line.
    void GoBack()
    {
        m_at = 0;
    }

    /// All lines with their tabs expanded, as ReadStudyText gives them.
    StudyLines AllLines() const;

    /// Share of the file that Next has returned, from 0 to 1.
    double Done() const
    {
        return m_bytes.isEmpty() ? 1 : double(m_at) / double(m_bytes.size());
    }

  private:
    QByteArray m_bytes;
    qsizetype m_at = 0; // where the next part starts
    int m_lineCount = 0;
    int m_blankCount = 0;
};

/// ReadStudyText with its result in separate arguments.
/// @param message  empty if the file was accepted, else the message of the refusal
/// @param errorLine  1-based line at fault; 1 if the file was refused as a whole; 0 if it was accepted
/// @return whether the file was accepted
bool ReadTextFile(const QString &path, int maxLineBytes, StudyLines *lines, QString *message, int *errorLine);

/// Whether a file's bytes are ASCII or Shift_JIS, the encodings that the program reads.
/// @param path  used only in the message
/// @param bytes  must own its data, unlike one from QByteArray::fromRawData
bool CheckTextEncoding(const QString &path, const QByteArray &bytes, QString *message);

/// Splits bytes in code page 932, at most MaxFileBytes, into lines. CR LF, LF and CR each terminate a line; no empty
/// line is added after a final terminator.
void ReadAllLines(const QByteArray &bytes, ExpandTabs expandTabs, StudyLines *lines);

/// A file's name without its folder and everything from the first "." on. "\" and "/" both count as separators, except
/// as the last character of the path. Empty for a path without a separator.
QString GetFileTitle(const QString &path);

/// The title of a study file in the record of its sessions, and so in the history: GetFileTitle with each control
/// character as one blank. A tab would break the history's lines.
QString RecordedTitle(const QString &path);

/// The message for a file that is not in Shift_JIS.
QString WrongCharCodeMessage(const QString &fileTitle, const QString &codeName);

/// The message for a file of more than MaxFileBytes.
QString FileTooLargeMessage(const QString &fileTitle);

/// The message for a file that cannot be read. @param reason  the system's error text
QString UnreadableFileMessage(const QString &fileTitle, const QString &reason);
