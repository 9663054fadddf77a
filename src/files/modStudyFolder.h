// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The study files of a folder, and the remarks on them in the list.
#pragma once

#include <QDateTime>
#include <QHash>
#include <QString>
#include <QStringList>

#include <utility>

/// What makes a file that cannot be opened, or hides less than it seems to, one that can be studied.
enum class Remedy
{
    None, ///< nothing in the program, or nothing is needed
    Mend, ///< MendFiles
    Write,
    Edit,   ///< of a file that cannot be written in the program
    Choose, ///< MendFiles, which asks for the encoding and mends the file only in the less likely one
};

/// "「書く」で直せます"; empty for None.
QString RemedyText(Remedy remedy);

/// Whether MendFiles has something to do with a file.
bool IsByMending(Remedy remedy);

/// What is known about a study file after reading it.
struct StudyFileFacts
{
    QString remarks{}; ///< see CheckStudyFile
    int blanks = 0;    ///< 0 for a file that cannot be opened
    Remedy remedy = Remedy::None;
    bool canBeOpened = true;
    qsizetype fullWidth = 0; ///< pairs of full-width brackets; 0 for a file that cannot be opened
};

/// Size in bytes and modification time of a file, by which changes are detected.
using FileStamp = std::pair<qint64, QDateTime>;

class StudyFolder
{
  public:
    /// @param path  the folder; if it does not exist, the list is empty
    explicit StudyFolder(const QString &path);

    /// Lists the folder's ".txt" files again: study files first, printable copies last, both in natural order, "第2回"
    /// before "第10回". No file is opened, and only checked files are queried for size and time, because that takes
    /// longer than listing.
    void Refresh();

    const QStringList &Names() const
    {
        return m_names;
    }

    /// Number of ".txt" files left out because their names cannot be decoded, so that they cannot be opened.
    int UnshowableCount() const
    {
        return m_unshowableCount;
    }

    const QString &Path() const
    {
        return m_path;
    }

    /// The file with a name, or else the first one with a title, as a list entry has it (see ListField); empty if there
    /// is none.
    QString NameOf(const QString &nameOrTitle) const;

    /// Full path of one of the files.
    QString PathOf(const QString &name) const;

    /// The facts about one of the files; no remarks and 0 blanks if it has not been checked.
    StudyFileFacts Facts(const QString &name) const;

    /// Whether one of the files has been checked, and no Refresh has since found it missing or changed.
    bool IsChecked(const QString &name) const;

    /// Reads one of the files and stores its facts.
    void Check(const QString &name);

  private:
    struct Entry
    {
        FileStamp stamp;
        StudyFileFacts facts;
    };

    QString m_path;
    QStringList m_found; // names in the system's order
    QStringList m_names;
    int m_unshowableCount = 0;
    QHash<QString, Entry> m_checked;
};

/// Reads a file and finds its blanks and the short remarks for the list. Faults that prevent opening it:
/// "文字コード＝EUC", "12行[ ]指定異常", "12行目 100バイト超過", "64MB超過", "読み込み不可". Hints that do not:
/// "空欄なし", "空欄なし（［ ］は全角）", "学習記録なし（名前に '）", "名前に制御文字". Several are joined by "、";
/// without any, remarks is empty.
StudyFileFacts CheckStudyFile(const QString &path);

/// Whether a file is a printable copy, by its name.
bool IsPrintableCopy(const QString &name);

/// Whether a file name contains every word of a text, in any order, ignoring case and width.
/// @param wanted  words separated by spaces; without words, every name matches
bool MatchesFilter(const QString &name, const QString &wanted);

/// What stands in the middle of a list without files: how to begin, or that the filter leaves nothing.
QString EmptyListText(const StudyFolder &folder, const QString &filter);

/// What the note below the list says about a file that can be mended.
QString MendNote(const StudyFileFacts &facts);

/// What it says about several selected files.
QString SelectionNote(qsizetype count);

/// The note below a folder's list: how many files cannot be shown, or else how files are added.
QString FolderNote(const StudyFolder &folder);

/// Why a command of the file list does not apply to the selection, for the user; empty if it does.
/// @param selected  name of the selected file; empty if none is. HardNoteTitle is none.
/// @param isForPrinting  whether the command makes a printable copy, which is refused for a file that is one
QString SelectionRefusal(const QString &selected, bool isForPrinting);
