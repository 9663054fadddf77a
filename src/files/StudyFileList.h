// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// List view of the study files; all rows have the same height. Whenever it paints, it tells which rows are in view.
#pragma once

#include <QListView>

class StudyFileList : public QListView
{
    Q_OBJECT

  public:
    using QListView::QListView;

  Q_SIGNALS:
    /// @param first, last  rows, from 0; last may be past the end
    void RowsShown(int first, int last);

  protected:
    void paintEvent(QPaintEvent *event) override
    {
        QListView::paintEvent(event);
        const int topPx = visualRect(model()->index(0, 0)).top();
        const int pitchPx = qMax(1, visualRect(model()->index(1, 0)).top() - topPx);
        Q_EMIT RowsShown(qMax(0, -topPx / pitchPx), (viewport()->height() - topPx) / pitchPx);
    }

    /// A click where there is no file changes nothing, and setCurrentIndex selects one file whatever key is held.
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex &index, const QEvent *event) const override
    {
        if (!event)
            return QItemSelectionModel::ClearAndSelect;
        return index.isValid() ? QListView::selectionCommand(index, event) : QItemSelectionModel::NoUpdate;
    }

    /// Repaints only the changed rows. New remarks move no row, but QListView would lay out all rows again for every
    /// file checked.
    void dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight, const QList<int> &roles) override
    {
        QAbstractItemView::dataChanged(topLeft, bottomRight, roles); // NOLINT(bugprone-parent-virtual-call)
        viewport()->update(visualRect(topLeft) | visualRect(bottomRight));
    }
};
