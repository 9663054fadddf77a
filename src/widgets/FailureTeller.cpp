// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/FailureTeller.h"

#include "platform/modSystemServices.h"
#include "widgets/BlockedWindow.h"
#include "widgets/frmMsg.h"

#include <QTimer>

#include <utility>

FailureTeller::FailureTeller(SystemServices &services, frmMsg &msg, std::function<QWidget *()> windowInUse,
                             QObject *parent)
    : QObject(parent), m_services(services), m_msg(msg), m_windowInUse(std::move(windowInUse)),
      m_timer(new QTimer(this))
{
    m_timer->setObjectName(QStringLiteral("tmrTell"));
    m_timer->setSingleShot(true);
    m_timer->setInterval(100);
    connect(m_timer, &QTimer::timeout, this, &FailureTeller::Tell);
    m_services.SetFailureTeller([this](const QString &message) {
        m_messages += message;
        m_timer->start();
    });
}

FailureTeller::~FailureTeller()
{
    m_services.SetFailureTeller({});
}

void FailureTeller::Tell()
{
    QWidget *const window = m_windowInUse();
    if (!window || m_messages.isEmpty())
        return;
    if (!IsBlocked(window))
        m_msg.Refuse(window, m_messages.takeFirst());
    if (!m_messages.isEmpty())
        m_timer->start();
}
