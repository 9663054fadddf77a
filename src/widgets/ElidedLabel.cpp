// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/ElidedLabel.h"

#include "widgets/NamedControls.h"

#include <QPainter>

ElidedLabel::ElidedLabel(const QString &name, int maxChars, QWidget *parent, Qt::TextElideMode elided)
    : QLabel(parent), m_maxChars(maxChars), m_elided(elided)
{
    setObjectName(name);
    setTextFormat(Qt::PlainText);
}

void ElidedLabel::SetText(const QString &text)
{
    setText(text);
    SetPlainToolTip(this, text);
}

QSize ElidedLabel::sizeHint() const
{
    const QSize size = QLabel::sizeHint();
    return QSize(qMin(size.width(), m_maxChars * fontMetrics().averageCharWidth()), size.height());
}

QSize ElidedLabel::minimumSizeHint() const
{
    return QSize(0, QLabel::minimumSizeHint().height());
}

void ElidedLabel::paintEvent(QPaintEvent *)
{
    QPainter(this).drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter,
                            fontMetrics().elidedText(text(), m_elided, width()));
}
