// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/BarButton.h"

#include "widgets/Contrast.h"
#include "widgets/Measures.h"

#include <QPainter>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString WidestCount = u" 000"_s;

} // namespace

BarControl::BarControl(QAbstractButton *self, Icon icon) : m_self(self), m_icon(icon)
{
    self->setFocusPolicy(Qt::TabFocus); // a click leaves the focus where the user works
    self->setAttribute(Qt::WA_Hover);
    self->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void BarControl::ShowLetter(bool isShown)
{
    m_showsLetter = isShown;
    m_self->update();
}

void BarControl::SetHardColour(const QColor &colour)
{
    m_hardColour = colour;
    m_self->update();
}

void BarControl::SetTickedColours(const QColor &ground, const QColor &text)
{
    m_tickedGround = ground;
    m_tickedText = text;
    m_self->update();
}

void BarControl::SetCount(int count)
{
    if (count == m_count)
        return;
    const bool hadPlace = m_count >= 0;
    m_count = count;
    m_self->setAccessibleName(count > 0 ? m_self->text() + u' ' + QString::number(count) : m_self->text());
    m_self->update();
    if (!hadPlace)
        m_self->updateGeometry();
}

/// Side of the icon's square; the arrow of a menu is smaller.
int BarControl::Side() const
{
    const QFontMetrics font = m_self->fontMetrics();
    return m_icon == Icon::Down ? MenuArrowSize(font) : IconSize(font);
}

int BarControl::Margin() const
{
    const QFontMetrics font = m_self->fontMetrics();
    return m_icon == Icon::Down ? MenuArrowMargin(font) : BarButtonMargin(font);
}

/// The face with room for the ring of the focus around it.
QSize BarControl::Size() const
{
    const QFontMetrics font = m_self->fontMetrics();
    const QString text = m_self->text();
    int width = 2 * Margin() + Side();
    if (!text.isEmpty())
        width += IconGap(font) + font.horizontalAdvance(text);
    if (m_count >= 0)
        width += font.horizontalAdvance(WidestCount);
    return QSize(width, ButtonHeight(font)) + 2 * QSize(FocusRingReach, FocusRingReach);
}

QColor BarControl::TextColour(bool isTicked) const
{
    constexpr float disabled = 0.4f;
    QColor colour = m_self->palette().color(QPalette::Active, QPalette::WindowText);
    if (isTicked && m_tickedText.isValid())
        colour = m_tickedText;
    if (!m_self->isEnabled())
        colour.setAlphaF(disabled);
    return colour;
}

void BarControl::PaintGround(QPainter *painter, const QRect &face) const
{
    const QPalette &palette = m_self->palette();
    const QColor window = palette.color(QPalette::Window);
    const QColor accent =
        WithContrast(palette.color(QPalette::Highlight), window, palette.color(QPalette::WindowText), ShapeContrast);
    const double radius = CornerRadius(m_self->fontMetrics());
    const auto paint = [painter, radius](const QRectF &area, double penWidth, const QColor &edge,
                                         const QBrush &ground) {
        const double half = penWidth / 2;
        painter->setPen(penWidth > 0 ? QPen(edge, penWidth) : QPen(Qt::NoPen));
        painter->setBrush(ground);
        painter->drawRoundedRect(area.adjusted(half, half, -half, -half), radius, radius);
    };
    const bool isTicked = m_self->isChecked() && m_tickedGround.isValid();
    // The palette of a desktop may have no tint on which the text can be read, or is to be used without any.
    const QColor tint = palette.color(QPalette::AlternateBase);
    const bool hasTint = !IsHighContrast(palette) && Contrast(tint, TextColour(false)) >= TextContrast;
    const int edgeWidth = hasTint ? 1 : FocusRingWidth;
    if (isTicked)
        paint(face, 1, m_tickedText, m_tickedGround);
    else if (m_self->isChecked() || m_self->isDown())
        paint(face, edgeWidth, accent, hasTint ? tint : window);
    else if (m_self->isEnabled() && m_self->underMouse() && hasTint)
        paint(face, 0, QColor(), tint);
    if (m_self->hasFocus())
        paint(face.adjusted(-FocusRingReach, -FocusRingReach, FocusRingReach, FocusRingReach), FocusRingWidth, accent,
              Qt::NoBrush);
}

void BarControl::PaintLetter(QPainter *painter, const QRect &square) const
{
    const QPalette &palette = m_self->palette();
    const double radius = CornerRadius(m_self->fontMetrics());
    painter->save();
    painter->setPen(Qt::NoPen);
    painter->setBrush(palette.highlight());
    painter->drawRoundedRect(square, radius, radius);
    QFont font = painter->font();
    font.setBold(true);
    painter->setFont(font);
    painter->setPen(palette.color(QPalette::HighlightedText));
    painter->drawText(square, Qt::AlignCenter, m_self->shortcut().toString().last(1));
    painter->restore();
}

void BarControl::Paint() const
{
    const QFontMetrics font = m_self->fontMetrics();
    const QRect face = m_self->rect().adjusted(FocusRingReach, FocusRingReach, -FocusRingReach, -FocusRingReach);
    const QColor colour = TextColour(m_self->isChecked());
    QPainter painter(m_self);
    painter.setRenderHint(QPainter::Antialiasing);
    PaintGround(&painter, face);
    const int side = Side();
    const QRect square(face.left() + Margin(), face.top() + (face.height() - side) / 2, side, side);
    if (m_showsLetter && !m_self->shortcut().isEmpty())
        PaintLetter(&painter, square);
    else
        PaintIcon(&painter, m_icon, square, colour, m_self->isEnabled() ? m_hardColour : QColor());
    const int left = square.right() + 1 + IconGap(font);
    QString text = m_self->text();
    if (m_count > 0)
        text += u' ' + QString::number(m_count);
    painter.setPen(colour);
    painter.drawText(QRect(left, face.top(), face.right() + 1 - left, face.height()),
                     int(Qt::AlignLeft) | int(Qt::AlignVCenter) | int(Qt::TextSingleLine), text);
}

BarButton::BarButton(const QString &name, Icon icon, const QString &text, QWidget *parent)
    : BarWidget(name, icon, text, parent)
{
    setAutoDefault(true); // Enter presses it too
}
