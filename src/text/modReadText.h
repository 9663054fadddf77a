// Reads a text file into lines, or refuses it for its size, its encoding or, in a study file, one of its lines. Whoever
// can refuse a text reads it here, and makes its own message or remark from the TextRefusal.
#pragma once

#include "text/modStudyLines.h"

#include <QByteArray>

/// Why a text file is refused, in the order of the checks.
enum class TextFault
{
    None,
    TooLarge,
    Unreadable,
    WrongCharCode,
    LineTooLong, ///< this and what follows only in a study file
    BracketCount,
    BracketOrder,
};

/// The result of a reading. Its message comes with it, as those of the lines quote what is not kept.
struct TextRefusal
{
    TextFault fault = TextFault::None;
    int line = 0;       ///< 1-based line that was refused; 1 for the file as a whole; 0 when there is no fault
    QString charCode{}; ///< WrongCharCode: the name of the character code
    QString message{};  ///< the whole of it for the user, its lines separated by CR LF; empty when there is no fault
};

/// Whether every tab of a text is replaced by two spaces as it is read.
enum class ExpandTabs : bool
{
    No,
    Yes,
};

/// Reads any text file of the program: ASCII or code page 932, at most MostFileBytes. A larger one is not even opened.
/// @param lines  empty after a refusal
TextRefusal ReadText(const QString &path, ExpandTabs expandTabs, StudyLines *lines);

/// Reads a study file, expands its tabs and makes the checks of modCheckText, up to the first fault. The file is read
/// once, so that what was checked is what is shown.
/// @param maxLineBytes  longest line allowed, in bytes of code page 932 after tab expansion
/// @param lines  empty after a refusal
TextRefusal ReadStudyText(const QString &path, int maxLineBytes, StudyLines *lines);

/// ReadStudyText with its result in separate arguments.
/// @param message  empty when the file was accepted, else the refusal
/// @param errorLine  1-based line that was refused; 1 when the file was refused as a whole; 0 when it was accepted
/// @return whether the file was accepted
bool ReadTextFile(const QString &path, int maxLineBytes, StudyLines *lines, QString *message, int *errorLine);

/// Whether a file's bytes are ASCII or Shift_JIS, the character codes that the program reads.
/// @param path  only named in the message
/// @param bytes  own their data, as QByteArray::fromRawData does not
bool CheckTextEncoding(const QString &path, const QByteArray &bytes, QString *message);

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
