// A row of controls that goes on below where the window is too narrow for it.
#pragma once

#include <QLayout>

/// Lays its items out from left to right, each at its preferred size and in the middle of its row's height, and begins
/// a new row where the next one does not fit. So large letters or a small screen push nothing out of the window.
class FlowLayout : public QLayout
{
  public:
    /// @param gapPx  between two items of a row, in pixels
    explicit FlowLayout(int gapPx);
    ~FlowLayout() override;

    void addItem(QLayoutItem *item) override;
    int count() const override;
    QLayoutItem *itemAt(int index) const override;
    QLayoutItem *takeAt(int index) override;
    Qt::Orientations expandingDirections() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int widthPx) const override;
    QSize sizeHint() const override; ///< of all items in one row
    QSize minimumSize() const override;
    void setGeometry(const QRect &rect) override;

  private:
    int Arrange(const QRect &area, bool movesItems) const;

    QList<QLayoutItem *> m_items;
};
