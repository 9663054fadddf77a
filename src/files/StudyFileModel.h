// The study files as a list view shows them. What is wrong with a file is found out for the rows that are painted: one
// file at a time between two events of the window, the most recently painted rows first.
#pragma once

#include "files/modStudyFolder.h"
#include "files/modStudyTally.h"

#include <QAbstractListModel>
#include <QStyledItemDelegate>
#include <QTimer>

class StudyFileModel : public QAbstractListModel
{
    Q_OBJECT

  public:
    enum Role
    {
        RemarksRole = Qt::UserRole, ///< what is remarked on the file, or an empty text
        FiguresRole, ///< StudyFigures as a QStringList, only the first where nothing was studied; empty with remarks
        PrintableCopyRole, ///< whether the file is a printable copy
    };

    StudyFileModel(StudyFolder &folder, const StudyTallies &tallies, QObject *parent);

    /// Lists the folder again. @param today  the day from which the last day of study is seen
    void Refresh(const QDate &today);

    /// Shows only files whose names hold all words of a text; without words, all.
    void SetFilter(const QString &wanted);

    /// Has the figures of all rows shown anew.
    void ShowTallies();

    /// Cancels all pending checks. Rows that are painted again request theirs again.
    void DropChecks();

    /// The row of a file, or an invalid index when it is not shown.
    QModelIndex IndexOf(const QString &name) const;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;

    /// Qt::DisplayRole: the file's name. Asking for the remarks or figures of a file that was not checked yet has it
    /// checked, and then dataChanged is emitted. Tooltip and accessible text: name, and remarks or figures, as far as
    /// they are known.
    QVariant data(const QModelIndex &index, int role) const override;

  private:
    void ShowMatching();
    void RequestCheck(const QString &name) const;
    void CheckNext();
    StudyTally TallyOf(const QString &name) const;
    QString Description(const QString &name) const;

    StudyFolder &m_folder;
    const StudyTallies &m_tallies;
    QDate m_today;
    QString m_filter;
    QStringList m_shown;
    QHash<QString, int> m_rows;          // of the names shown
    mutable QStringList m_pending;       // files whose check was requested, the next one first
    mutable qsizetype m_newRequests = 0; // how many of them were requested since the last check
    mutable QTimer m_checking{this};
};

/// Paints a file's name, dimmed for a printable copy, and at the right edge, dimmed, the remarks on the file or its
/// figures, each below that of the row above. The name is cut in its middle where all does not fit: its end tells the
/// chapters of a textbook apart.
class StudyFileDelegate : public QStyledItemDelegate
{
    Q_OBJECT

  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    /// As wide as nothing: a long name must not make a row wider than the list, which would move the remarks out of it.
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};
