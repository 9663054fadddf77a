// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// List view of the study files; all rows have the same height.
#pragma once

#include <QListView>

class StudyFileList : public QListView
{
    Q_OBJECT

  public:
    using QListView::QListView;

  protected:
    /// Repaints only the changed rows. New remarks move no row, but QListView would lay out all rows again for every
    /// file checked.
    void dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight, const QList<int> &roles) override
    {
        QAbstractItemView::dataChanged(topLeft, bottomRight, roles); // NOLINT(bugprone-parent-virtual-call)
        viewport()->update(visualRect(topLeft) | visualRect(bottomRight));
    }
};
