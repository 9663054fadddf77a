// The study files of a folder, and what is wrong with each.
#pragma once

#include <QDateTime>
#include <QHash>
#include <QString>
#include <QStringList>

class StudyFolder
{
  public:
    /// @param path  the folder; it need not exist, and then lists nothing
    explicit StudyFolder(const QString &path);

    /// Lists the folder's ".txt" files again, sorted by name in binary order. No file is opened.
    void Refresh();

    const QStringList &Names() const
    {
        return m_names;
    }

    const QString &Path() const
    {
        return m_path;
    }

    /// The full path of one of the files.
    QString PathOf(const QString &name) const;

    /// What is wrong with one of the files, empty when nothing is. Reads the file when it is first asked for, and again
    /// after a Refresh that found it with another size or time.
    QString Fault(const QString &name);

  private:
    struct Entry
    {
        qint64 size;
        QDateTime modified;
        bool isChecked = false;
        QString fault;
    };

    QString m_path;
    QStringList m_names;
    QHash<QString, Entry> m_entries;
};

/// What keeps a study file from being read, in the few words of a list entry: "文字コード＝EUC", "12行[ ]指定異常",
/// "12行100バイト超過", "読み込み不可"; empty when nothing does.
QString FileFault(const QString &path);

/// The choice a command of the file list works on.
/// @param selected  name of the selected file, empty when none is
/// @param isForPrinting  whether it is to be made into a printable copy, which such a copy itself cannot
/// @return false after a refusal, which message then holds
bool CheckSelection(const QString &selected, bool isForPrinting, QString *message);
