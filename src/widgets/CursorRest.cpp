// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/CursorRest.h"

#include <QApplication>
#include <QEvent>
#include <QTimer>

namespace {

constexpr int DesktopsFlashTime = -1; // the desktop's own, also when it changes
constexpr int NoFlashing = 0;

} // namespace

CursorRest::CursorRest() : m_untilRest(new QTimer(this))
{
    constexpr int restMs = 10'000;
    m_untilRest->setObjectName(QStringLiteral("tmrCursorRest"));
    m_untilRest->setSingleShot(true);
    m_untilRest->setInterval(restMs);
    connect(m_untilRest, &QTimer::timeout, this, [] { QApplication::setCursorFlashTime(NoFlashing); });
    qApp->installEventFilter(this);
}

bool CursorRest::eventFilter(QObject *, QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::InputMethod:
    case QEvent::MouseButtonPress:
    case QEvent::FocusIn:
        QApplication::setCursorFlashTime(DesktopsFlashTime);
        m_untilRest->start();
        break;
    default:
        break;
    }
    return false;
}
