#include "widgets/HeldKeyFilter.h"

#include <QApplication>
#include <QKeyEvent>

namespace {

// Far below what a finger needs to press a key again; the two events of a repetition bear the same time.
constexpr quint64 LongestGapMs = 5;

} // namespace

HeldKeyFilter::HeldKeyFilter()
{
    qApp->installEventFilter(this);
}

bool HeldKeyFilter::IsFresh(const QKeyEvent &press) const
{
    if (press.isAutoRepeat())
        return false;
    // An event that was made by a program may come without a time.
    const bool isTimed = press.timestamp() != 0 && m_releasedMs != 0;
    return !isTimed || press.key() != m_releasedKey || press.timestamp() - m_releasedMs > LongestGapMs;
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
