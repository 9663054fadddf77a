// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/ScreenFit.h"

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

QSize AvailableSize(const QWidget *window)
{
    // The real frame is unknown until the window is shown; that of Qt's MDI windows is about as thick.
    const int borderPx = window->style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth);
    const int titlePx = window->style()->pixelMetric(QStyle::PM_TitleBarHeight);
    return window->screen()->availableSize() - QSize(2 * borderPx, titlePx + 2 * borderPx);
}

void FitToScreen(QDialog *window, QWidget *content, const QSize &wanted, QLayout *below)
{
    auto *const scroll = new QScrollArea(window);
    scroll->setObjectName(u"scroll"_s);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus); // Tab goes from control to control
    scroll->setWidgetResizable(true);
    scroll->setWidget(content);
    // Tab alone scrolls to a control; so must the Alt key of one.
    QObject::connect(qApp, &QApplication::focusChanged, scroll, [scroll, content](const QWidget *, QWidget *now) {
        if (now && content->isAncestorOf(now))
            scroll->ensureWidgetVisible(now);
    });
    auto *const layout = new QVBoxLayout(window);
    QMargins margins = layout->contentsMargins();
    content->layout()->setContentsMargins(margins);
    margins.setTop(0);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(scroll);
    QSize belowSize(0, 0);
    if (below) {
        layout->addLayout(below);
        below->setContentsMargins(margins);
        belowSize = below->sizeHint();
    }

    const QSize available = AvailableSize(window);
    QSize size = content->sizeHint().expandedTo(QSize(belowSize.width(), 0)) + QSize(0, belowSize.height());
    // The space taken by one scroll bar must not make the other one necessary.
    const QSize least = content->minimumSizeHint();
    if (least.height() + belowSize.height() > available.height())
        size.rwidth() += scroll->verticalScrollBar()->sizeHint().width();
    if (least.width() > available.width())
        size.rheight() += scroll->horizontalScrollBar()->sizeHint().height();
    // At a fractional scale, the window may turn out smaller by a part of a pixel.
    window->resize((size + QSize(1, 1)).expandedTo(wanted).boundedTo(available));
}

void FitToText(QLineEdit *box, const QString &widest)
{
    const QFontMetrics metrics = box->fontMetrics();
    // The minimum size is one character plus the frame. The cursor after the text needs space too.
    const int framePx = box->minimumSizeHint().width() - metrics.maxWidth();
    box->setFixedWidth(metrics.horizontalAdvance(widest) + metrics.averageCharWidth() + qMax(0, framePx));
}
