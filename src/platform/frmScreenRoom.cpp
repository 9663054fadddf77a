#include "platform/frmScreenRoom.h"

#include <QScreen>
#include <QStyle>
#include <QWidget>

QSize RoomOnScreen(const QWidget &window)
{
    // The frame is not known before the window is shown; that of the toolkit's own windows stands in for it.
    const int border = window.style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth);
    const int title = window.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    return window.screen()->availableSize() - QSize(2 * border, title + 2 * border);
}
