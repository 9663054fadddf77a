// A label for a text of any length: what does not fit is left out in its middle and stands in the tooltip.
#pragma once

#include <QLabel>

class ElidedLabel : public QLabel
{
  public:
    /// @param widestChars  width that the text may take, in average characters of the label's font
    ElidedLabel(int widestChars, QWidget *parent);

    void SetText(const QString &text);

  protected:
    void changeEvent(QEvent *event) override;

  private:
    int m_widestChars;
    QString m_text;
};
