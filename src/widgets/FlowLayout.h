// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// A row of controls that wraps when the window is too narrow for it.
#pragma once

#include <QLayout>

/// Lays its items out from left to right, each at its preferred size and centred vertically, and starts a new row when
/// the next one does not fit, so that large fonts or small screens push nothing out of the window.
class FlowLayout : public QLayout
{
  public:
    /// @param gapPx  spacing between items of a row, in pixels
    explicit FlowLayout(int gapPx);
    ~FlowLayout() override;

    void addItem(QLayoutItem *item) override;
    int count() const override;
    QLayoutItem *itemAt(int index) const override;
    QLayoutItem *takeAt(int index) override;
    Qt::Orientations expandingDirections() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int widthPx) const override;
    QSize sizeHint() const override; ///< with all items in one row
    QSize minimumSize() const override;
    void setGeometry(const QRect &rect) override;

  private:
    int Arrange(const QRect &area, bool movesItems) const;

    QList<QLayoutItem *> m_items;
};
