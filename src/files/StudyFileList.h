// The list of study files, whose rows are all of one height.
#pragma once

#include <QListView>

class StudyFileList : public QListView
{
    Q_OBJECT

  public:
    using QListView::QListView;

  protected:
    /// What is known of a file changes no row's place. QListView would lay out all rows anew for each file checked.
    void dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight, const QList<int> &roles) override
    {
        QAbstractItemView::dataChanged(topLeft, bottomRight, roles); // NOLINT(bugprone-parent-virtual-call)
        viewport()->update(visualRect(topLeft) | visualRect(bottomRight));
    }
};
