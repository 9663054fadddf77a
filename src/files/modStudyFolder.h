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

    /// The remarks on one of the files: empty when there are none or it was not checked yet.
    QString Fault(const QString &name) const;

    /// Whether one of the files was checked since it was last changed. Of no file is it true after its first Refresh,
    /// and of none that a Refresh found with another size or time.
    bool IsChecked(const QString &name) const;

    /// Reads one of the files, as of the last Refresh, and finds its remarks.
    void Check(const QString &name);

  private:
    struct Entry
    {
        qint64 size = -1;
        QDateTime modified;
        bool isChecked = false;
        QString fault;
    };

    QString m_path;
    QStringList m_names;
    QHash<QString, Entry> m_entries;
};

/// What the user should know of a study file, in the few words of a list entry. What keeps it from being opened:
/// "文字コード＝EUC", "12行[ ]指定異常", "12行目 100バイト超過", "64MB超過", "読み込み不可". What it opens without:
/// "空欄なし", "空欄なし（［ ］は全角）", "学習記録なし（名前に '）". Several are joined by "、"; empty when there are
/// none.
QString FileFault(const QString &path);

/// The choice a command of the file list works on.
/// @param selected  name of the selected file, empty when none is
/// @param isForPrinting  whether it is to be made into a printable copy, which such a copy itself cannot
/// @return false after a refusal, which message then holds
bool CheckSelection(const QString &selected, bool isForPrinting, QString *message);
