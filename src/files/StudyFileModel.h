// The study files as a list view shows them. What is wrong with a file is found out for the rows that are painted: one
// file at a time between two events of the window, the most recently painted rows first.
#pragma once

#include "files/modStudyFolder.h"

#include <QAbstractListModel>
#include <QStyledItemDelegate>
#include <QTimer>

class StudyFileModel : public QAbstractListModel
{
    Q_OBJECT

  public:
    static constexpr int FaultRole = Qt::UserRole;

    StudyFileModel(StudyFolder &folder, QObject *parent);

    /// Lists the folder again.
    void Refresh();

    /// Cancels all pending checks. Rows that are painted again request theirs again.
    void DropChecks();

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;

    /// Qt::DisplayRole: the file's name. FaultRole: the remarks on it, or an empty text; asking for those of a file
    /// that was not checked yet has it checked, and then dataChanged is emitted. Tooltip and accessible text: name and
    /// remarks, as far as they are known.
    QVariant data(const QModelIndex &index, int role) const override;

  private:
    void CheckNext();

    StudyFolder &m_folder;
    mutable QStringList m_pending;       // files whose check was requested, the next one first
    mutable qsizetype m_newRequests = 0; // how many of them were requested since the last check
    mutable QTimer m_checking{this};
};

/// Paints a file's name, and at the right edge, dimmed, the remarks on the file. The name is cut in its middle where
/// both do not fit: its end tells the chapters of a textbook apart.
class StudyFileDelegate : public QStyledItemDelegate
{
    Q_OBJECT

  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    /// As wide as nothing: a long name must not make a row wider than the list, which would move the remarks out of it.
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};
