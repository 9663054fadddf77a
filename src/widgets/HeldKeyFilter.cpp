// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/HeldKeyFilter.h"

#include <QApplication>
#include <QKeyEvent>

namespace {

// The two events of a repetition have the same time; no finger presses a key again this fast.
constexpr quint64 MaxGapMs = 5;

} // namespace

HeldKeyFilter::HeldKeyFilter()
{
    qApp->installEventFilter(this);
}

bool HeldKeyFilter::IsFresh(const QKeyEvent &press) const
{
    if (press.isAutoRepeat())
        return false;
    // Synthetic events may have no time.
    const bool isTimed = press.timestamp() != 0 && m_releasedMs != 0;
    return !isTimed || press.key() != m_releasedKey || press.timestamp() - m_releasedMs > MaxGapMs;
}

bool HeldKeyFilter::eventFilter(QObject *, QEvent *event)
{
    if (event->type() == QEvent::KeyRelease) {
        const auto *const release = static_cast<QKeyEvent *>(event);
        m_releasedKey = release->key();
        m_releasedMs = release->timestamp();
    }
    return false;
}
