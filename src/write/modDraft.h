// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// A study file that is being written: opening it, keeping a draft of it, and saving it. Nothing here has a window;
// whoever has one shows the messages, which are complete texts for the user with lines separated by CR LF. Texts have
// lines separated by "\n", as a text field has them.
#pragma once

#include "base/modFile.h"

#include <QByteArray>
#include <QDate>
#include <QDateTime>
#include <QList>
#include <QString>

/// Largest file to be written here: typing stays quick in it. A larger one is for the text editor.
constexpr qint64 MaxWriteMegabytes = 2;
constexpr qint64 MaxWriteBytes = MaxWriteMegabytes * BytesPerMegabyte;

/// Longest line to be written here, in characters: a text field lays out a whole line for each key that is typed in it.
constexpr qsizetype MaxWriteLine = 20'000;

/// Whether a text has a longer one. @param text  with lines separated by "\n"
bool HasEndlessLine(QStringView text);

/// The same with such lines broken.
QString WithoutEndlessLines(const QString &text);

/// The file that a text belongs to, as it was when last read or saved.
struct WrittenFile
{
    QString path;
    QByteArray digest;           ///< of the contents that the text was made from, see DigestOf; empty for a new file
    QByteArray bytes{};          ///< these contents; empty for a new file and for one in another encoding
    QByteArray lineEnd = "\r\n"; ///< that most lines have
};

/// What identifies the contents of a file: hexadecimal SHA-256.
QByteArray DigestOf(const QByteArray &bytes);

/// Reads a file to write in. A study file is decoded as it is, whatever its lines; a file in another encoding that
/// CanConvertFrom knows is decoded too, and is then a changed text.
/// @param text  receives the text; empty after a refusal
/// @param isChanged  receives whether saving would change the file although nothing was typed
/// @return why the file cannot be written in here (too large, a line too long, unreadable, not text); empty if it can
QString OpenToWrite(const QString &path, WrittenFile *file, QString *text, bool *isChanged);

/// The file for a new text: one with such a name that does not exist but has a draft, which is to be offered; else that
/// of FreshWrittenFile.
WrittenFile NewWrittenFile(const QString &folder);

/// The first of 新しい学習ファイル.txt, 新しい学習ファイル2.txt ... in a folder that does not exist and has no draft:
/// the file for a text that must not be mixed with one.
WrittenFile FreshWrittenFile(const QString &folder);

QString TooLargeToWriteMessage(const QString &fileTitle);
QString EndlessLineMessage(const QString &fileTitle);

/// A character that a study file cannot have, and what would replace it.
struct UnwritableCharacter
{
    int line;   ///< 1-based
    int column; ///< 1-based, in UTF-16 units
    int length; ///< in UTF-16 units
    char32_t character;
    QString replacement; ///< its equivalent, the letter without its accent, or "〓"
};

/// How a text is encoded for its file.
struct EncodedDraft
{
    QByteArray bytes;                      ///< complete only if unwritableCount is 0
    qsizetype unwritableCount = 0;         ///< number of characters that are not in code page 932
    QList<UnwritableCharacter> unwritable; ///< the first of them, at most MaxUnwritableShown
};

constexpr int MaxUnwritableShown = 5;

/// Encodes a text in code page 932. All lines end as most of the old file do, with CR LF in a new file or if there are
/// equally many; the last one ends if the text does. A line of the old file whose text did not change keeps its bytes,
/// also those that code page 932 cannot give back.
EncodedDraft EncodeDraft(const QString &text, const WrittenFile &file);

/// The text with all such characters replaced, except in lines that keep their bytes. The question is
/// UnwritableQuestion.
QString WithUnwritableReplaced(const QString &text, const WrittenFile &file);

/// Lists the characters that stop the saving, and asks whether to replace them.
QString UnwritableQuestion(const EncodedDraft &encoded);

/// Asks whether to save a text with faults. @param problems  number of problems that refuse the file
QString SaveWithProblemsQuestion(qsizetype problems);

/// How to save if the file changed on disk after it was read.
enum class OnConflict
{
    Stop,     ///< nothing is written
    KeepBoth, ///< the changed file is kept as a study file of its own, see KeptTwinPath
    Replace,  ///< the changed file is replaced; like any old file that is, it is kept as a backup
};

struct SaveResult
{
    enum Outcome
    {
        Saved,
        Unwritable, ///< characters that code page 932 lacks; nothing is written
        Conflict,   ///< the file changed on disk; nothing is written. ConflictQuestion asks
        Failed,     ///< fault; the file on disk is unchanged, the draft is kept
    };
    Outcome outcome = Saved;
    EncodedDraft encoded{}; ///< of Unwritable
    FileFault fault{};      ///< of Failed
    QString keptPath{};     ///< where the old file is kept; empty if it was not
    QString refusal{};      ///< of Saved: why the file is refused for study as it is now; empty if it is not
};

/// Saves a text, replacing the file atomically, and removes its draft. The first time on a day, the old file is kept
/// under FreeBackupPath: if none of its backups is of today. A file that others have changed is kept at any time.
/// @param file  updated to what was saved; unchanged otherwise
SaveResult SaveDraft(const QString &text, WrittenFile *file, const QDate &today, OnConflict onConflict);

/// Where KeepBoth keeps the changed file: the first of "name（ほかの変更）.txt", "name（ほかの変更）2.txt" ... that
/// does not exist.
QString KeptTwinPath(const QString &path);

/// Asks what to do about a conflict. The answers are "両方残す", which is KeepBoth, "置き換える" and "キャンセル".
QString ConflictQuestion(const QString &path);

/// The message about SaveResult::Failed.
QString NotSavedMessage(const FileFault &fault);

/// The draft beside a file: its name and ".draft". It is not in the list of study files. Layout, in UTF-8, lines ending
/// with LF:
///
///     "Kotoban draft 1"
///     digest of the contents that the text was made from; empty for a new file
///     the text
struct Draft
{
    QString text;
    QByteArray digest;
    QDateTime written; ///< when it was written, local time
};

constexpr qint64 MaxDraftBytes = 16 * BytesPerMegabyte;

QString DraftPath(const QString &path);

/// Writes the draft atomically, readable and writable by the user alone.
/// @return a fault after which an earlier draft is unchanged
FileFault WriteDraft(const QString &text, const WrittenFile &file);

/// Reads the draft of a file. @return whether there is one; a damaged one is none and stays where it is
bool ReadDraft(const QString &path, Draft *draft);

/// Removes a draft that was saved or thrown away. @return whether there is none any more
bool RemoveDraft(const QString &path);

/// Whether a draft is worth offering: its text is not that of the file.
bool HasUnsavedText(const Draft &draft, const QString &text);

/// Asks whether to go on with a draft. Says so if the file has changed since.
QString DraftQuestion(const Draft &draft, const WrittenFile &file);

/// Goes on with a draft: from now on the file is the one that the draft was made from, so that saving notices if it has
/// changed since.
void TakeDraft(const Draft &draft, WrittenFile *file);

/// Asks before a window with an unsaved text closes.
QString SaveBeforeClosingQuestion(const QString &path);
