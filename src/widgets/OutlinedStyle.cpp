// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/OutlinedStyle.h"

#include "widgets/BarButton.h"
#include "widgets/Contrast.h"
#include "widgets/Measures.h"
#include "widgets/PageColours.h"
#include "widgets/PaintedIcon.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFocusFrame>
#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyleOption>
#include <QTabBar>

namespace {

constexpr QStringView StyleName = u"fusion";

/// How much of its colour what is disabled keeps.
constexpr float DisabledPart = 0.4f;

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

/// Draws a rounded rectangle just inside another one: filled areas, since Qt needs more code and time for lines.
void DrawOutline(QPainter *painter, const QRect &rect, const QPen &pen, double radius, const QBrush &fill = Qt::NoBrush)
{
    const double half = pen.widthF() / 2;
    const auto rounded = [&](double inset) {
        QPainterPath path;
        const double corner = qMax(0.0, radius + half - inset);
        path.addRoundedRect(QRectF(rect).adjusted(inset, inset, -inset, -inset), corner, corner);
        return path;
    };
    QPainterPath ring = rounded(0);
    if (qMin(rect.width(), rect.height()) > 2 * pen.widthF())
        ring.addPath(rounded(pen.widthF()));
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->fillPath(rounded(half), fill);
    painter->fillPath(ring, pen.brush());
    painter->restore();
}

/// Outlines the circle that the style draws, which has an odd width and lies one pixel inside the rectangle.
void DrawCircle(QPainter *painter, const QRect &rect, const QPen &pen)
{
    const double radius = (rect.width() | 1) / 2.0 - 1;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(pen);
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
    const DesktopColours colours = ColoursOn(option.palette);
    const bool isFilled = IsFilled(option);
    QColor face = isFilled ? colours.accent : option.palette.color(QPalette::Button);
    const QColor text = isFilled ? colours.onAccent : option.palette.color(QPalette::ButtonText);
    if (isDown)
        face = Mixed(face, text, pressed);
    else if (option.state.testFlag(QStyle::State_MouseOver) && option.state.testFlag(QStyle::State_Enabled))
        face = Mixed(face, text, underPointer);
    const QColor edge = isFilled ? colours.accent : OutlineColour(option);
    DrawOutline(painter, option.rect, QPen(edge, OutlineWidth(option)), CornerRadius(option.fontMetrics), face);
}

/// Space that a button needs between its icon and its text, beside what Qt leaves there.
int ExtraIconGap(const QStyleOptionButton &button)
{
    constexpr int ofQtPx = 4;
    return button.icon.isNull() || button.text.isEmpty() ? 0 : std::max(0, IconGap(button.fontMetrics) - ofQtPx);
}

/// Space that the arrow of a combo box needs at its right end.
int ArrowPlace(const QFontMetrics &font)
{
    return MenuArrowSize(font) + FieldMargin(font); // half of that at both sides
}

/// Draws a line below the chosen tab, and a ring around it if it has the focus.
void DrawTab(QPainter *painter, const QStyleOption &option)
{
    constexpr int linePx = 3;
    if (!option.state.testFlag(QStyle::State_Selected))
        return;
    const QColor accent = ColoursOn(option.palette).accent;
    const QRect &tab = option.rect;
    painter->fillRect(QRect(tab.left(), tab.bottom() + 1 - linePx, tab.width(), linePx), accent);
    if (option.state.testFlag(QStyle::State_HasFocus))
        DrawOutline(painter, tab, QPen(accent, FocusRingWidth), CornerRadius(option.fontMetrics));
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

/// Whether a field has a frame of its own; that in a combo box has none.
bool HasFrame(const QStyleOption *option)
{
    const auto *const panel = qstyleoption_cast<const QStyleOptionFrame *>(option);
    return panel && panel->lineWidth > 0;
}

/// What a field needs besides the space that Qt leaves beside a text.
int ExtraFieldMargin(const QFontMetrics &font)
{
    constexpr int ofQtPx = 4; // frame and margin
    return std::max(0, FieldMargin(font) - ofQtPx);
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
    for (QWidget *outer = control; outer; outer = outer->parentWidget())
        if (const auto *const area = qobject_cast<const QScrollArea *>(outer))
            for (const QScrollBar *const bar : {area->horizontalScrollBar(), area->verticalScrollBar()})
                connect(bar, &QScrollBar::valueChanged, this, &OutlinedStyle::FollowFocus, Qt::UniqueConnection);
}

/// Moves the ring with what is scrolled, which Qt's frame does not do.
void OutlinedStyle::FollowFocus()
{
    QWidget *const control = m_focusFrame ? m_focusFrame->widget() : nullptr;
    if (!control)
        return;
    m_focusFrame->setWidget(nullptr);
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
    if (element == PE_FrameFocusRect &&
        (qobject_cast<const QAbstractButton *>(widget) || qobject_cast<const QTabBar *>(widget)))
        return; // it has a ring
    if (element == PE_IndicatorArrowDown && qobject_cast<const QPushButton *>(widget)) {
        PaintIcon(painter, Icon::Down, option->rect, option->palette.color(QPalette::ButtonText), QColor());
        return;
    }
    if (element == PE_PanelLineEdit && HasFrame(option)) {
        DrawOutline(painter, option->rect, outline, CornerRadius(option->fontMetrics), option->palette.base());
        return;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    switch (element) {
    case PE_Frame:
        DrawOutline(painter, option->rect, outline, 0);
        break;
    case PE_IndicatorCheckBox:
        DrawOutline(painter, option->rect, QPen(outline.color(), qMax(IndicatorLineWidth, outline.widthF())), CornerPx);
        break;
    case PE_FrameLineEdit:
        DrawOutline(painter, option->rect, outline, CornerPx);
        break;
    case PE_IndicatorRadioButton:
        DrawCircle(painter, option->rect, QPen(outline.color(), qMax(IndicatorLineWidth, outline.widthF())));
        break;
    default:
        break;
    }
}

void OutlinedStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                                const QWidget *widget) const
{
    if (element == CE_FocusFrame) {
        DrawOutline(painter, option->rect, QPen(ColoursOn(option->palette).accent, FocusRingWidth),
                    CornerRadius(option->fontMetrics) + FocusRingGap);
        return;
    }
    if (element == CE_TabBarTabShape) {
        DrawTab(painter, *option);
        return;
    }
    if (const auto *const button = qstyleoption_cast<const QStyleOptionButton *>(option);
        element == CE_PushButtonLabel && button) {
        QStyleOptionButton label = *button;
        if (IsFilled(*option))
            label.palette.setColor(QPalette::ButtonText, ColoursOn(option->palette).onAccent);
        if (!label.icon.isNull() && !label.text.isEmpty())
            DrawLabelWithIcon(label, painter);
        else
            QProxyStyle::drawControl(element, &label, painter, widget);
        return;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
    if (element == CE_ProgressBarGroove)
        DrawOutline(painter, option->rect, OutlineColour(*option), CornerPx);
}

void OutlinedStyle::DrawLabelWithIcon(const QStyleOptionButton &button, QPainter *painter) const
{
    const bool isEnabled = button.state.testFlag(State_Enabled);
    const int sidePx = button.iconSize.width();
    const int gapPx = IconGap(button.fontMetrics);
    const int flags = int(Qt::AlignLeft) | int(Qt::AlignVCenter) | int(Qt::TextShowMnemonic);
    const int textPx = button.fontMetrics.size(Qt::TextShowMnemonic, button.text).width();
    QRect place(button.rect);
    place.setLeft(place.left() + (place.width() - sidePx - gapPx - textPx) / 2);
    button.icon.paint(painter, QRect(place.left(), place.center().y() + 1 - (sidePx + 1) / 2, sidePx, sidePx),
                      Qt::AlignCenter, isEnabled ? QIcon::Normal : QIcon::Disabled);
    place.setLeft(place.left() + sidePx + gapPx);
    drawItemText(painter, place, flags, button.palette, isEnabled, button.text, QPalette::ButtonText);
}

void OutlinedStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                                       const QWidget *widget) const
{
    if (const auto *const combo = qstyleoption_cast<const QStyleOptionComboBox *>(option);
        control == CC_ComboBox && combo) {
        QStyleOptionComboBox withoutArrow = *combo;
        withoutArrow.subControls.setFlag(SC_ComboBoxArrow, false);
        QProxyStyle::drawComplexControl(control, &withoutArrow, painter, widget);
        const int sidePx = MenuArrowSize(option->fontMetrics);
        QRect arrow(0, 0, sidePx, sidePx);
        arrow.moveCenter(subControlRect(control, option, SC_ComboBoxArrow, widget).center());
        const auto group = option->state.testFlag(State_Enabled) ? QPalette::Active : QPalette::Disabled;
        PaintIcon(painter, Icon::Down, arrow, option->palette.color(group, QPalette::ButtonText), QColor());
        return;
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (control == CC_ScrollBar && option->subControls.testFlag(SC_ScrollBarSlider))
        DrawOutline(painter, subControlRect(control, option, SC_ScrollBarSlider, widget),
                    option->state.testFlag(State_HasFocus) ? ColoursOn(option->palette).accent : OutlineColour(*option),
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
    case PM_ButtonIconSize:
        return IconSize(FontOf(option, widget));
    case PM_MenuButtonIndicator: {
        constexpr int aroundArrowPx = 6; // of which the style leaves free
        return MenuArrowSize(FontOf(option, widget)) + aroundArrowPx;
    }
    case PM_TabBarTabShiftVertical:
        return 0; // the line below the chosen tab tells it apart
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

QRect OutlinedStyle::subElementRect(SubElement element, const QStyleOption *option, const QWidget *widget) const
{
    const QRect rect = QProxyStyle::subElementRect(element, option, widget);
    if (element != SE_LineEditContents || !HasFrame(option))
        return rect;
    const int margin = ExtraFieldMargin(option->fontMetrics);
    return rect.adjusted(margin, 0, -margin, 0);
}

QRect OutlinedStyle::subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl part,
                                    const QWidget *widget) const
{
    QRect rect = QProxyStyle::subControlRect(control, option, part, widget);
    if (control == CC_ComboBox && part == SC_ComboBoxArrow)
        rect.setLeft(option->rect.right() + 1 - ArrowPlace(option->fontMetrics));
    else if (control == CC_ComboBox && part == SC_ComboBoxEditField)
        rect.setRight(option->rect.right() - ArrowPlace(option->fontMetrics));
    return rect;
}

int OutlinedStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                             QStyleHintReturn *returnData) const
{
    switch (hint) {
    case SH_DialogButtonLayout: // OK before Cancel on every desktop, as in the message dialog
        return QDialogButtonBox::WinLayout;
    case SH_DialogButtonBox_ButtonsHaveIcons: // as in the message dialog
        return false;
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
    case CT_PushButton: {
        const auto *const button = qstyleoption_cast<const QStyleOptionButton *>(option);
        return QSize(button ? ExtraIconGap(*button) : 0, 0) +
               size.expandedTo(QSize(contents.width() + 2 * ButtonMargin(font), ButtonHeight(font)));
    }
    case CT_LineEdit:
        return size.expandedTo(QSize(0, ButtonHeight(font))) +
               QSize(HasFrame(option) ? 2 * ExtraFieldMargin(font) : 0, 0);
    case CT_ComboBox:
        return size.expandedTo(QSize(contents.width() + FieldMargin(font) + ArrowPlace(font), ButtonHeight(font)));
    default:
        return size;
    }
}
