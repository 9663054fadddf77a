// Reads a study file into lines, or refuses it with a message for the learner.
#pragma once

#include "text/modStudyLines.h"

#include <QByteArray>

/// Reads and checks a study file: character code, lines, tabs, then the checks of modCheckText, up to the first
/// failure. The file is read once, so that what was checked is what is shown.
/// @param maxLineBytes  longest line allowed, in bytes of code page 932 after tab expansion
/// @param lines  the lines with their tabs expanded; empty after a refusal
/// @param message  empty when the file was accepted, else the refusal, its lines separated by CR LF
/// @param errorLine  1-based line that was refused; 1 when the file was refused as a whole; 0 when it was accepted
/// @return whether the file was accepted
bool ReadTextFile(const QString &path, int maxLineBytes, StudyLines *lines, QString *message, int *errorLine);

/// Whether a file's bytes are ASCII or Shift_JIS, the character codes that the program reads.
/// @param path  only named in the message
bool CheckTextEncoding(const QString &path, const QByteArray &bytes, QString *message);

/// The name of the character code of a whole file.
/// @param bytes  own their data, as QByteArray::fromRawData does not
QString FileCharCodeName(const QByteArray &bytes);

/// Whether every tab of a text is replaced by two spaces as it is read.
enum class ExpandTabs : bool
{
    No,
    Yes,
};

/// Takes bytes of code page 932, at most MostFileBytes, apart into lines. CR LF, LF and CR each end a line; nothing is
/// made up behind the last.
void ReadAllLines(const QByteArray &bytes, ExpandTabs expandTabs, StudyLines *lines);

/// A file's name without its folder and without all that follows its first ".". Both "\" and "/" separate; the path's
/// last character is no separator. A path without a separator gives an empty text.
QString GetFileTitle(const QString &path);

/// The message for a file that is not in Shift_JIS.
QString WrongCharCodeMessage(const QString &fileTitle, const QString &codeName);

/// The message for a file of more than MostFileBytes.
QString FileTooLargeMessage(const QString &fileTitle);

/// The message for a file that the system does not let us read. @param reason  the system's own words
QString UnreadableFileMessage(const QString &fileTitle, const QString &reason);
