// A scroll bar that shows whether keys go to it, which the toolkit's own does in no style.
#pragma once

#include <QScrollBar>

class FocusScrollBar : public QScrollBar
{
  public:
    FocusScrollBar(Qt::Orientation orientation, QWidget *parent);

  protected:
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};
