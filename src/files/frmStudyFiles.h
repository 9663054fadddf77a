// The study files as a list view shows them. What is wrong with a file is found out for the rows that are painted, one
// file after the other once the window is there.
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

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;

    /// Qt::DisplayRole: the file's name. FaultRole: what is wrong with it, or an empty text; of a file that was not
    /// checked yet it is asked for again when that is done.
    QVariant data(const QModelIndex &index, int role) const override;

  private:
    void CheckNext();

    StudyFolder &m_folder;
    mutable QStringList m_wanted; // files whose check was asked for
    mutable QTimer m_checking;
};

/// Paints a file's name, and behind it, dimmed, what is wrong with the file.
class StudyFileDelegate : public QStyledItemDelegate
{
    Q_OBJECT

  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};
