// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/ElidedLabel.h"

#include <QPainter>
#include <QTextDocument>

ElidedLabel::ElidedLabel(const QString &name, int maxChars, QWidget *parent) : QLabel(parent), m_maxChars(maxChars)
{
    setObjectName(name);
    setTextFormat(Qt::PlainText);
}

void ElidedLabel::SetText(const QString &text)
{
    setText(text);
    setToolTip(text.isEmpty() ? text : Qt::convertFromPlainText(text)); // or "<b>" in a name would be markup
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
                            fontMetrics().elidedText(text(), Qt::ElideMiddle, width()));
}
