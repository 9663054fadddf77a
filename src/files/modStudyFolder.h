// The study files of a folder, and what the list says of each.
#pragma once

#include <QDateTime>
#include <QHash>
#include <QString>
#include <QStringList>

#include <utility>

/// What reading a study file has told.
struct StudyFileFacts
{
    QString remarks; ///< as RemarksOnFile gives them
    int blanks = 0;  ///< 0 for a file that cannot be opened
};

/// Size in bytes and last change of a file, by which it is told whether it is still the same.
using FileStamp = std::pair<qint64, QDateTime>;

class StudyFolder
{
  public:
    /// @param path  the folder; it need not exist, and then lists nothing
    explicit StudyFolder(const QString &path);

    /// Lists the folder's ".txt" files again: study files first, printable copies last, each as people count, "第2回"
    /// before "第10回". No file is opened, and the system is asked for the size and time of none but those that were
    /// checked, which would take longer than the list.
    void Refresh();

    const QStringList &Names() const
    {
        return m_names;
    }

    /// How many ".txt" files are left out because the system cannot show their names, and so cannot open them.
    int UnshowableCount() const
    {
        return m_unshowableCount;
    }

    const QString &Path() const
    {
        return m_path;
    }

    /// The first of the files that has a title, as GetFileTitle gives it; empty when none has.
    QString NameOfTitle(const QString &title) const;

    /// The full path of one of the files.
    QString PathOf(const QString &name) const;

    /// The facts about one of the files: those of an empty text when it was not checked yet.
    StudyFileFacts Facts(const QString &name) const;

    /// Whether one of the files was checked, and no Refresh has since found it gone, or with another size or time.
    bool IsChecked(const QString &name) const;

    /// Reads one of the files and finds its facts.
    void Check(const QString &name);

  private:
    struct Entry
    {
        FileStamp stamp;
        StudyFileFacts facts;
    };

    QString m_path;
    QStringList m_found; // the names in the system's order
    QStringList m_names;
    int m_unshowableCount = 0;
    QHash<QString, Entry> m_checked;
};

/// Reads a file and says what the user should know of it, in the few words of a list entry. What keeps it from being
/// opened: "文字コード＝EUC", "12行[ ]指定異常", "12行目 100バイト超過", "64MB超過", "読み込み不可". What it opens
/// without: "空欄なし", "空欄なし（［ ］は全角）", "学習記録なし（名前に '）". Several are joined by "、"; empty when
/// there are none.
StudyFileFacts CheckStudyFile(const QString &path);

/// Whether a file is a printable copy, by its name.
bool IsPrintableCopy(const QString &name);

/// Whether a file's name holds every word of a text, whatever their order, case and width.
/// @param wanted  words separated by blanks; one without words is held by all names
bool MatchesFilter(const QString &name, const QString &wanted);

/// What is to be said of a folder below its list: how to begin where it is empty, and how many files it cannot show.
/// Empty when there is nothing to say.
QString FolderNote(const StudyFolder &folder);

/// The choice a command of the file list works on.
/// @param selected  name of the selected file, empty when none is
/// @param isForPrinting  whether it is to be made into a printable copy, which such a copy itself cannot
/// @return false after a refusal, which message then holds
bool CheckSelection(const QString &selected, bool isForPrinting, QString *message);
