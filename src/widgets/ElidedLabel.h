// A label that leaves out the middle of a text that is too long for it: the end of a path or a file's name tells it
// from others. The whole text stands in the tooltip.
#pragma once

#include <QLabel>

class ElidedLabel : public QLabel
{
  public:
    /// @param widestChars  width that the label asks for at the most, in average characters of its font
    ElidedLabel(const QString &name, int widestChars, QWidget *parent);

    void SetText(const QString &text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent *event) override;

  private:
    int m_widestChars;
};
