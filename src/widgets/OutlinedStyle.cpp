// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/OutlinedStyle.h"

#include "widgets/Contrast.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QPainter>
#include <QStyleOption>

namespace {

constexpr QStringView StyleName = u"fusion";

/// Whether the style shows an element in the highlight colour: it has keyboard focus, or Enter presses it.
bool IsHighlighted(const QStyleOption &option)
{
    const auto *const button = qstyleoption_cast<const QStyleOptionButton *>(&option);
    return (option.state.testFlag(QStyle::State_HasFocus) &&
            option.state.testFlag(QStyle::State_KeyboardFocusChange)) ||
           (button && button->features.testFlag(QStyleOptionButton::DefaultButton));
}

QColor OutlineColour(const QStyleOption &option, bool isHighlighted)
{
    const QPalette &palette = option.palette;
    const QColor window = palette.color(QPalette::Window);
    const QColor wanted = isHighlighted ? palette.color(QPalette::Highlight) : window.darker(140);
    return WithContrast(wanted, window, palette.color(QPalette::WindowText), ShapeContrast);
}

void DrawOutline(QPainter *painter, const QRect &rect, const QColor &colour, double radius)
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(colour);
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    painter->restore();
}

/// Outlines the circle that the style draws, which has an odd width and lies one pixel inside the rectangle.
void DrawCircle(QPainter *painter, const QRect &rect, const QColor &colour)
{
    const double radius = (rect.width() | 1) / 2.0 - 1;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(colour, 1.3)); // a curve 1 pixel wide would cover no pixel fully
    painter->setBrush(Qt::NoBrush);
    painter->drawEllipse(QPointF(rect.center() + QPoint(1, 1)), radius, radius);
    painter->restore();
}

constexpr double CornerPx = 2; // the style's corner radius

} // namespace

OutlinedStyle::OutlinedStyle() : QProxyStyle(StyleName.toString()) {}

void OutlinedStyle::Install()
{
    if (QApplication::style()->name() == StyleName)
        QApplication::setStyle(new OutlinedStyle);
}

void OutlinedStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                                  const QWidget *widget) const
{
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    switch (element) {
    case PE_Frame:
    case PE_IndicatorCheckBox:
        DrawOutline(painter, option->rect, OutlineColour(*option, IsHighlighted(*option)), 0);
        break;
    case PE_FrameLineEdit:
        DrawOutline(painter, option->rect, OutlineColour(*option, option->state.testFlag(State_HasFocus)), CornerPx);
        break;
    case PE_PanelButtonCommand:
        DrawOutline(painter, option->rect, OutlineColour(*option, IsHighlighted(*option)), CornerPx);
        break;
    case PE_IndicatorRadioButton:
        DrawCircle(painter, option->rect, OutlineColour(*option, IsHighlighted(*option)));
        break;
    default:
        break;
    }
}

void OutlinedStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                                const QWidget *widget) const
{
    QProxyStyle::drawControl(element, option, painter, widget);
    if (element == CE_ProgressBarGroove)
        DrawOutline(painter, option->rect, OutlineColour(*option, false), CornerPx);
}

void OutlinedStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                                       const QWidget *widget) const
{
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (control == CC_ScrollBar && option->subControls.testFlag(SC_ScrollBarSlider))
        DrawOutline(painter, subControlRect(control, option, SC_ScrollBarSlider, widget),
                    OutlineColour(*option, option->state.testFlag(State_HasFocus)), 0);
}

int OutlinedStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                             QStyleHintReturn *returned) const
{
    return hint == SH_DialogButtonLayout ? int(QDialogButtonBox::WinLayout)
                                         : QProxyStyle::styleHint(hint, option, widget, returned);
}
