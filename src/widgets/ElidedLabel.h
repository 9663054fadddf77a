// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// A label that elides a long text: usually its middle, because the end of a path or file name distinguishes it from
// others. The tooltip shows the whole text.
#pragma once

#include <QLabel>

class ElidedLabel : public QLabel
{
  public:
    /// @param maxChars  largest preferred width, in average characters of the label's font
    ElidedLabel(const QString &name, int maxChars, QWidget *parent, Qt::TextElideMode elided = Qt::ElideMiddle);

    void SetText(const QString &text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent *event) override;

  private:
    int m_maxChars;
    Qt::TextElideMode m_elided;
};
