#include "widgets/BusyPointer.h"

#include <QCursor>
#include <QGuiApplication>

BusyPointer::BusyPointer()
{
    m_elapsed.start();
}

BusyPointer::~BusyPointer()
{
    if (m_isShown)
        QGuiApplication::restoreOverrideCursor();
}

void BusyPointer::Tick()
{
    constexpr qint64 patienceMs = 500;
    if (m_elapsed.elapsed() < patienceMs)
        return;
    if (!m_isShown)
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    m_isShown = true;
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}
