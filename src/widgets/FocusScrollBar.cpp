// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/FocusScrollBar.h"

#include "widgets/Contrast.h"

#include <QPainter>

FocusScrollBar::FocusScrollBar(Qt::Orientation orientation, QWidget *parent) : QScrollBar(orientation, parent)
{
    setFocusPolicy(Qt::TabFocus);
}

void FocusScrollBar::focusInEvent(QFocusEvent *event)
{
    QScrollBar::focusInEvent(event);
    update();
}

void FocusScrollBar::focusOutEvent(QFocusEvent *event)
{
    QScrollBar::focusOutEvent(event);
    update();
}

void FocusScrollBar::paintEvent(QPaintEvent *event)
{
    QScrollBar::paintEvent(event);
    if (!hasFocus())
        return;
    constexpr int framePx = 2;
    QPainter painter(this);
    const QColor colour = WithContrast(palette().color(QPalette::Highlight), palette().color(QPalette::Window),
                                       palette().color(QPalette::WindowText), ShapeContrast);
    painter.setPen(QPen(colour, framePx, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawRect(rect().adjusted(framePx / 2, framePx / 2, -framePx / 2, -framePx / 2));
}
