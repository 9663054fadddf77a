// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/PaintedIcon.h"

#include "widgets/Measures.h"

#include <QColor>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

#include <algorithm>
#include <iterator>

namespace {

constexpr double GridSize = 20;
constexpr double PenWidth = 1.5; // on the grid
constexpr double MinPenWidthPx = 1.25;

/// The lines and areas of an icon on a grid of 20 by 20: the commands M, L, C and Z of SVG paths with absolute numbers.
/// In the order of the enumeration.
struct IconPaths
{
    const char *stroke;
    const char *fill = "";
};

constexpr IconPaths Paths[] = {
    // Open
    {"M2.5 15.5 L2.5 4.75 L7.5 4.75 L9.5 7 L17.5 7 L17.5 15.5 Z"},
    // Reload
    {"M15.43 6.61 C13.9 4.17 10.94 3.05 8.18 3.86 C5.42 4.68 3.55 7.24 3.6 10.11 C3.65 12.99 5.61 15.48 8.4 16.2 "
     "C11.18 16.92 14.1 15.69 15.54 13.2 M15.6 2.6 L15.6 6.6 L11.6 6.6"},
    // Edit
    {"M4 16 L4.9 12.4 L13.4 3.9 L16.1 6.6 L7.6 15.1 Z M11.4 5.9 L14.1 8.6"},
    // Search
    {"M14 8.75 C14 11.65 11.65 14 8.75 14 C5.85 14 3.5 11.65 3.5 8.75 C3.5 5.85 5.85 3.5 8.75 3.5 C11.65 3.5 14 5.85 "
     "14 8.75 Z M12.7 12.7 L17 17"},
    // Filter
    {"M3 4 L17 4 L11.6 10.4 L11.6 16.2 L8.4 14.4 L8.4 10.4 Z"},
    // Hard
    {"M12.5 5 L2.5 5 L2.5 15.5 L17.5 15.5 L17.5 10", "M13 3 L18.5 3 L18.5 8.5 Z"},
    // Speak
    {"M2.75 7.75 L5.75 7.75 L9.75 4.25 L9.75 15.75 L5.75 12.25 L2.75 12.25 Z M12.62 7.88 C13.79 9.05 13.79 10.95 12.62 "
     "12.12 M14.74 5.76 C17.09 8.1 17.09 11.9 14.74 14.24"},
    // Settings
    {"M2.5 6 L9.5 6 M14 6 L17.5 6 M14 6 C14 7.24 12.99 8.25 11.75 8.25 C10.51 8.25 9.5 7.24 9.5 6 C9.5 4.76 10.51 3.75 "
     "11.75 3.75 C12.99 3.75 14 4.76 14 6 Z M2.5 14 L6 14 M10.5 14 L17.5 14 M10.5 14 C10.5 15.24 9.49 16.25 8.25 16.25 "
     "C7.01 16.25 6 15.24 6 14 C6 12.76 7.01 11.75 8.25 11.75 C9.49 11.75 10.5 12.76 10.5 14 Z"},
    // Help
    {"M17.25 10 C17.25 14 14 17.25 10 17.25 C6 17.25 2.75 14 2.75 10 C2.75 6 6 2.75 10 2.75 C14 2.75 17.25 6 17.25 10 "
     "Z M7.8 8 C7.8 5.1 12.3 5.1 12.3 7.9 C12.3 9.7 10 9.7 10 11.5",
     "M10.95 14 C10.95 14.52 10.52 14.95 10 14.95 C9.48 14.95 9.05 14.52 9.05 14 C9.05 13.48 9.48 13.05 10 13.05 "
     "C10.52 13.05 10.95 13.48 10.95 14 Z"},
    // More
    {"M4.5 5 L9.5 10 L4.5 15 M10.5 5 L15.5 10 L10.5 15"},
    // PageOnly
    {"M3 7 L3 3 L7 3 M13 3 L17 3 L17 7 M17 13 L17 17 L13 17 M7 17 L3 17 L3 13"},
    // Bars
    {"M3 3.5 L17 3.5 L17 16.5 L3 16.5 Z M3 7 L17 7 M3 13.5 L17 13.5"},
    // Plus
    {"M10 4 L10 16 M4 10 L16 10"},
    // Minus
    {"M4 10 L16 10"},
    // Down
    {"M5 7.5 L10 12.5 L15 7.5"},
    // New
    {"M11.5 2.75 L4 2.75 L4 17.25 L16 17.25 L16 7.25 Z M11.5 2.75 L11.5 7.25 L16 7.25 M10 9.25 L10 14.75 M7.25 12 "
     "L12.75 12"},
    // Write
    {"M6.2 10.8 L13 4 L16 7 L9.2 13.8 Z M6.2 10.8 L5 15 L9.2 13.8 M3 17.5 L13 17.5"},
    // Picture
    {"M2.5 4 L17.5 4 L17.5 16 L2.5 16 Z M2.5 13.5 L7 9 L11 13 L13.5 10.5 L17.5 14.5 M14.25 7.5 C14.25 8.19 13.69 8.75 "
     "13 8.75 C12.31 8.75 11.75 8.19 11.75 7.5 C11.75 6.81 12.31 6.25 13 6.25 C13.69 6.25 14.25 6.81 14.25 7.5 Z"},
    // Undo
    {"M7 3.5 L3 7.5 L7 11.5 M3 7.5 L12 7.5 C14.49 7.5 16.5 9.51 16.5 12 C16.5 14.49 14.49 16.5 12 16.5 L7.5 16.5"},
    // Redo
    {"M13 3.5 L17 7.5 L13 11.5 M17 7.5 L8 7.5 C5.51 7.5 3.5 9.51 3.5 12 C3.5 14.49 5.51 16.5 8 16.5 L12.5 16.5"},
    // Save
    {"M10 3 L10 12 M6.25 8.5 L10 12.25 L13.75 8.5 M3 12.5 L3 16.75 L17 16.75 L17 12.5"},
    // Warn
    {"M10 3 L17.75 16.5 L2.25 16.5 Z M10 8 L10 11.75", "M10.9 14 C10.9 14.5 10.5 14.9 10 14.9 C9.5 14.9 9.1 14.5 9.1 "
                                                       "14 C9.1 13.5 9.5 13.1 10 13.1 C10.5 13.1 10.9 13.5 10.9 14 Z"},
    // Check
    {"M4 10.5 L8.25 14.75 L16 6"},
    // Print
    {"M5.5 7 L5.5 3 L14.5 3 L14.5 7 M5.5 13.5 L3 13.5 L3 7 L17 7 L17 13.5 L14.5 13.5 M5.5 11.5 L14.5 11.5 L14.5 17 "
     "L5.5 17 Z"},
    // Notebook
    {"M5 2.75 L16.25 2.75 L16.25 17.25 L5 17.25 Z M3.25 6.25 L6.5 6.25 M3.25 10 L6.5 10 M3.25 13.75 L6.5 13.75 M9.25 "
     "6.75 L13.25 6.75"},
    // File
    {"M11.5 2.75 L4 2.75 L4 17.25 L16 17.25 L16 7.25 Z M11.5 2.75 L11.5 7.25 L16 7.25"},
    // Others
    {"", "M5.4 10 C5.4 10.77 4.77 11.4 4 11.4 C3.23 11.4 2.6 10.77 2.6 10 C2.6 9.23 3.23 8.6 4 8.6 C4.77 8.6 5.4 9.23 "
         "5.4 10 Z M11.4 10 C11.4 10.77 10.77 11.4 10 11.4 C9.23 11.4 8.6 10.77 8.6 10 C8.6 9.23 9.23 8.6 10 8.6 "
         "C10.77 8.6 11.4 9.23 11.4 10 Z M17.4 10 C17.4 10.77 16.77 11.4 16 11.4 C15.23 11.4 14.6 10.77 14.6 10 C14.6 "
         "9.23 15.23 8.6 16 8.6 C16.77 8.6 17.4 9.23 17.4 10 Z"},
};
static_assert(std::size(Paths) == IconCount);

QPainterPath Parsed(const char *text)
{
    QPainterPath path;
    const QStringList parts = QString::fromLatin1(text).split(u' ', Qt::SkipEmptyParts);
    qsizetype next = 0;
    const auto point = [&parts, &next](qsizetype letters) {
        const double x = parts[next++].sliced(letters).toDouble();
        return QPointF(x, parts[next++].toDouble());
    };
    while (next < parts.size()) {
        switch (parts[next].front().unicode()) {
        case u'M':
            path.moveTo(point(1));
            break;
        case u'L':
            path.lineTo(point(1));
            break;
        case u'C': {
            const QPointF first = point(1);
            const QPointF second = point(0);
            path.cubicTo(first, second, point(0));
            break;
        }
        default:
            path.closeSubpath();
            ++next;
        }
    }
    return path;
}

/// Paints an icon in the present palette of the desktop.
class ButtonIconEngine : public QIconEngine
{
  public:
    explicit ButtonIconEngine(Icon icon) : m_icon(icon) {}

    QIconEngine *clone() const override
    {
        return new ButtonIconEngine(m_icon);
    }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        PaintIcon(painter, m_icon, rect, Colour(mode), QColor());
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, picture.rect(), mode, state);
        return picture;
    }

  private:
    static QColor Colour(QIcon::Mode mode)
    {
        const QPalette::ColorGroup group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        return QGuiApplication::palette().color(group, QPalette::ButtonText);
    }

    Icon m_icon;
};

} // namespace

QIcon ButtonIcon(Icon icon)
{
    return QIcon(new ButtonIconEngine(icon));
}

void PaintIcon(QPainter *painter, Icon icon, const QRectF &square, const QColor &colour, const QColor &hardColour)
{
    const IconPaths &paths = Paths[int(icon)];
    const double scale = square.width() / GridSize;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(square.topLeft());
    painter->scale(scale, scale);
    painter->strokePath(Parsed(paths.stroke), QPen(colour, std::max(PenWidth, MinPenWidthPx / scale), Qt::SolidLine,
                                                   Qt::RoundCap, Qt::RoundJoin));
    painter->fillPath(Parsed(paths.fill), icon == Icon::Hard && hardColour.isValid() ? hardColour : colour);
    painter->restore();
}

void PaintHardCorner(QPainter *painter, const QRect &line, const QString &number, const QFontMetrics &font,
                     const QColor &colour)
{
    const int side = Ems(font, 0.6);
    const int right = line.right() - font.horizontalAdvance(number) - IconGap(font) / 2;
    const double top = line.center().y() - side / 2.0;
    QPainterPath corner(QPointF(right - side, top));
    corner.lineTo(right, top);
    corner.lineTo(right, top + side);
    painter->fillPath(corner, colour);
}
