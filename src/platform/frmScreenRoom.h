// How large a window may be so that all of it can be seen.
#pragma once

#include <QSize>

class QWidget;

/// Largest size of a window's inner area, in pixels, with which the window and its frame fit on its screen.
QSize RoomOnScreen(const QWidget &window);
