// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/OutlinedStyle.h"

#include "widgets/BarButton.h"
#include "widgets/Contrast.h"
#include "widgets/Measures.h"
#include "widgets/PageColours.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFocusFrame>
#include <QLineEdit>
#include <QPainter>
#include <QStyleOption>

namespace {

constexpr QStringView StyleName = u"fusion";

/// How much of its colour what is disabled keeps.
constexpr float DisabledPart = 0.4f;

/// The colour that leads the eye, and that of text on it.
struct Accent
{
    QColor ground;
    QColor text;
};

Accent AccentOf(const QPalette &palette)
{
    const QColor window = palette.color(QPalette::Window);
    const QColor text = palette.color(QPalette::WindowText);
    const PageColours &colours = IsDarker(window, text) ? DarkPage : LightPage;
    Accent accent{colours.accent, colours.onAccent};
    if (IsHighContrast(palette))
        accent = {palette.color(QPalette::Highlight), palette.color(QPalette::HighlightedText)};
    accent.ground = WithContrast(accent.ground, window, text, ShapeContrast);
    const bool isLight = Contrast(accent.ground, Qt::black) > Contrast(accent.ground, Qt::white);
    accent.text = WithContrast(accent.text, accent.ground, isLight ? Qt::black : Qt::white, TextContrast);
    return accent;
}

QColor OutlineColour(const QStyleOption &option)
{
    const QColor window = option.palette.color(QPalette::Active, QPalette::Window);
    const QColor text = option.palette.color(QPalette::Active, QPalette::WindowText);
    const QColor colour = WithContrast(window.darker(140), window, text, ShapeContrast);
    return option.state.testFlag(QStyle::State_Enabled) ? colour : Mixed(window, colour, DisabledPart);
}

int OutlineWidth(const QStyleOption &option)
{
    return IsHighContrast(option.palette) ? 2 : 1;
}

/// Draws a rounded rectangle just inside another one.
void DrawOutline(QPainter *painter, const QRect &rect, const QPen &pen, double radius, const QBrush &fill = Qt::NoBrush)
{
    const double half = pen.widthF() / 2;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(pen);
    painter->setBrush(fill);
    painter->drawRoundedRect(QRectF(rect).adjusted(half, half, -half, -half), radius, radius);
    painter->restore();
}

/// Outlines the circle that the style draws, which has an odd width and lies one pixel inside the rectangle.
void DrawCircle(QPainter *painter, const QRect &rect, const QColor &colour)
{
    const double radius = (rect.width() | 1) / 2.0 - 1;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(colour, IndicatorLineWidth));
    painter->setBrush(Qt::NoBrush);
    painter->drawEllipse(QPointF(rect.center() + QPoint(1, 1)), radius, radius);
    painter->restore();
}

/// Whether a button is filled because Enter presses it.
bool IsFilled(const QStyleOption &option)
{
    const auto *const button = qstyleoption_cast<const QStyleOptionButton *>(&option);
    return button && button->features.testFlag(QStyleOptionButton::DefaultButton) &&
           option.state.testFlag(QStyle::State_Enabled);
}

void DrawButton(QPainter *painter, const QStyleOption &option)
{
    constexpr float pressed = 0.15f;
    constexpr float underPointer = 0.06f;
    const auto *const button = qstyleoption_cast<const QStyleOptionButton *>(&option);
    const bool isDown = option.state.testAnyFlags(QStyle::State_Sunken | QStyle::State_On);
    if (button && button->features.testFlag(QStyleOptionButton::Flat) && !isDown)
        return;
    const Accent accent = AccentOf(option.palette);
    const bool isFilled = IsFilled(option);
    QColor face = isFilled ? accent.ground : option.palette.color(QPalette::Button);
    const QColor text = isFilled ? accent.text : option.palette.color(QPalette::ButtonText);
    if (isDown)
        face = Mixed(face, text, pressed);
    else if (option.state.testFlag(QStyle::State_MouseOver) && option.state.testFlag(QStyle::State_Enabled))
        face = Mixed(face, text, underPointer);
    const QColor edge = isFilled ? accent.ground : OutlineColour(option);
    DrawOutline(painter, option.rect, QPen(edge, OutlineWidth(option)), CornerRadius(option.fontMetrics), face);
}

constexpr double CornerPx = 2; // the style's corner radius

/// Whether the ring marks the focus that a widget has just got; others mark it themselves, and a button that is clicked
/// needs no mark.
bool HasRing(const QWidget *widget)
{
    if (const auto *const button = qobject_cast<const QAbstractButton *>(widget))
        return !dynamic_cast<const BarControl *>(button) && QGuiApplication::mouseButtons() == Qt::NoButton;
    return qobject_cast<const QLineEdit *>(widget) || qobject_cast<const QComboBox *>(widget) ||
           qobject_cast<const QAbstractScrollArea *>(widget);
}

QFontMetrics FontOf(const QStyleOption *option, const QWidget *widget)
{
    return widget ? widget->fontMetrics() : option ? option->fontMetrics : QFontMetrics(QApplication::font());
}

} // namespace

OutlinedStyle::OutlinedStyle() : QProxyStyle(StyleName.toString()) {}

void OutlinedStyle::Install()
{
    if (QApplication::style()->name() != StyleName)
        return;
    auto *const style = new OutlinedStyle;
    QApplication::setStyle(style);
    connect(qApp, &QApplication::focusChanged, style,
            [style](QWidget *, QWidget *focused) { style->ShowFocus(focused); });
}

void OutlinedStyle::ShowFocus(QWidget *focused)
{
    QWidget *control = focused && HasRing(focused) ? focused : nullptr;
    if (control && qobject_cast<QComboBox *>(control->parentWidget()))
        control = control->parentWidget(); // the field of a box that can be typed into
    if (control && !m_focusFrame)
        m_focusFrame = new QFocusFrame(control);
    if (m_focusFrame)
        m_focusFrame->setWidget(control);
}

void OutlinedStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                                  const QWidget *widget) const
{
    const QPen outline(OutlineColour(*option), OutlineWidth(*option));
    if (element == PE_PanelButtonCommand) {
        DrawButton(painter, *option);
        return;
    }
    if (element == PE_FrameFocusRect && qobject_cast<const QAbstractButton *>(widget))
        return; // it has a ring
    if (const auto *const panel = qstyleoption_cast<const QStyleOptionFrame *>(option);
        element == PE_PanelLineEdit && panel && panel->lineWidth > 0) {
        DrawOutline(painter, option->rect, outline, CornerRadius(option->fontMetrics), option->palette.base());
        return;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    switch (element) {
    case PE_Frame:
        DrawOutline(painter, option->rect, outline, 0);
        break;
    case PE_IndicatorCheckBox:
        DrawOutline(painter, option->rect, QPen(outline.color(), IndicatorLineWidth), CornerPx);
        break;
    case PE_FrameLineEdit:
        DrawOutline(painter, option->rect, outline, CornerPx);
        break;
    case PE_IndicatorRadioButton:
        DrawCircle(painter, option->rect, outline.color());
        break;
    default:
        break;
    }
}

void OutlinedStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                                const QWidget *widget) const
{
    if (element == CE_FocusFrame) {
        DrawOutline(painter, option->rect, QPen(AccentOf(option->palette).ground, FocusRingWidth),
                    CornerRadius(option->fontMetrics) + FocusRingGap);
        return;
    }
    if (const auto *const button = qstyleoption_cast<const QStyleOptionButton *>(option);
        element == CE_PushButtonLabel && button && IsFilled(*option)) {
        QStyleOptionButton filled = *button;
        filled.palette.setColor(QPalette::ButtonText, AccentOf(option->palette).text);
        QProxyStyle::drawControl(element, &filled, painter, widget);
        return;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
    if (element == CE_ProgressBarGroove)
        DrawOutline(painter, option->rect, OutlineColour(*option), CornerPx);
}

void OutlinedStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                                       const QWidget *widget) const
{
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (control == CC_ScrollBar && option->subControls.testFlag(SC_ScrollBarSlider))
        DrawOutline(painter, subControlRect(control, option, SC_ScrollBarSlider, widget),
                    option->state.testFlag(State_HasFocus) ? AccentOf(option->palette).ground : OutlineColour(*option),
                    0);
}

// Some palettes have no colour for disabled text, or the one of the window.
void OutlinedStyle::drawItemText(QPainter *painter, const QRect &rect, int flags, const QPalette &palette,
                                 bool isEnabled, const QString &text, QPalette::ColorRole role) const
{
    QPalette readable = palette;
    if (!isEnabled && role != QPalette::NoRole)
        readable.setColor(QPalette::Disabled, role,
                          Mixed(palette.color(QPalette::Active, QPalette::Window),
                                palette.color(QPalette::Active, role), DisabledPart));
    QProxyStyle::drawItemText(painter, rect, flags, readable, isEnabled, text, role);
}

int OutlinedStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    switch (metric) {
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
        return IndicatorSize(FontOf(option, widget));
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing:
        return IndicatorGap(FontOf(option, widget));
    case PM_LayoutHorizontalSpacing:
    case PM_LayoutVerticalSpacing:
        return ControlGap(FontOf(option, widget));
    case PM_LayoutLeftMargin:
    case PM_LayoutTopMargin:
    case PM_LayoutRightMargin:
    case PM_LayoutBottomMargin:
        return widget && widget->isWindow() ? WindowMargin : QProxyStyle::pixelMetric(metric, option, widget);
    case PM_FocusFrameHMargin:
    case PM_FocusFrameVMargin: // with a widget, they are the margins of a list's texts
        return widget ? QProxyStyle::pixelMetric(metric, option, widget) : FocusRingReach;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int OutlinedStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                             QStyleHintReturn *returnData) const
{
    switch (hint) {
    case SH_DialogButtonLayout: // OK before Cancel on every desktop, as in the message dialog
        return QDialogButtonBox::WinLayout;
    case SH_FocusFrame_AboveWidget: // or the ring would be cut off where the control fills its parent
        return true;
    default:
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
}

QSize OutlinedStyle::sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &contents,
                                      const QWidget *widget) const
{
    const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    const QFontMetrics font = FontOf(option, widget);
    switch (type) {
    case CT_PushButton:
        return size.expandedTo(QSize(contents.width() + 2 * ButtonMargin(font), ButtonHeight(font)));
    case CT_LineEdit:
    case CT_ComboBox:
        return size.expandedTo(QSize(0, ButtonHeight(font)));
    default:
        return size;
    }
}
