// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Lengths that grow with the font of a window, in logical pixels. An em is the width of a full-width character.
#pragma once

#include <QFontMetrics>
#include <QSize>

#include <algorithm>
#include <cmath>

/// A number of ems.
inline int Ems(const QFontMetrics &font, double count)
{
    return int(std::lround(count * font.horizontalAdvance(u'あ')));
}

/// Height of a bar of commands.
inline int BarHeight(const QFontMetrics &font)
{
    return font.height() + 20;
}

/// Height of the row below a page.
inline int StateBarHeight(const QFontMetrics &font)
{
    return font.height() + 14;
}

/// Height of that row while nothing else is around the page.
inline int PageOnlyHeight(const QFontMetrics &font)
{
    return font.height() + 6;
}

/// Height of the face of a button.
inline int ButtonHeight(const QFontMetrics &font)
{
    return font.height() + 10;
}

/// Space at the left and right end of a button in a bar.
inline int BarButtonMargin(const QFontMetrics &font)
{
    return Ems(font, 0.55);
}

/// Space at the left and right end of a button in a window.
inline int ButtonMargin(const QFontMetrics &font)
{
    return Ems(font, 0.9);
}

/// Space at the left and right end of a field.
inline int FieldMargin(const QFontMetrics &font)
{
    return Ems(font, 0.5);
}

/// Side of the square of a check box or radio button.
inline int IndicatorSize(const QFontMetrics &font)
{
    return Ems(font, 1.15);
}

/// Space between that and its text.
inline int IndicatorGap(const QFontMetrics &font)
{
    return Ems(font, 0.5);
}

constexpr double IndicatorLineWidth = 1.5;

/// Space between controls that belong together.
inline int ControlGap(const QFontMetrics &font)
{
    return Ems(font, 0.6);
}

/// Space between groups of controls.
inline int GroupGap(const QFontMetrics &font)
{
    return Ems(font, 0.9);
}

/// Side of the square of an icon.
inline int IconSize(const QFontMetrics &font)
{
    return Ems(font, 1.25);
}

/// Side of the square of the arrow that opens a menu.
inline int MenuArrowSize(const QFontMetrics &font)
{
    return Ems(font, 0.75);
}

/// Space at both sides of that arrow, if it is a button of its own.
inline int MenuArrowMargin(const QFontMetrics &font)
{
    return Ems(font, 0.2);
}

/// Space between an icon and its text.
inline int IconGap(const QFontMetrics &font)
{
    return Ems(font, 0.4);
}

/// Radius of the corners of controls.
inline double CornerRadius(const QFontMetrics &font)
{
    return std::min(0.3 * font.horizontalAdvance(u'あ'), 6.0);
}

constexpr int WindowMargin = 12; ///< along the edges of a window
constexpr int FocusRingWidth = 2;
constexpr int FocusRingGap = 1; ///< between a control and the ring around it
constexpr int FocusRingReach = FocusRingWidth + FocusRingGap;

/// Smallest size of the study window.
inline QSize LeastStudySize(const QFontMetrics &font)
{
    return QSize(Ems(font, 34), 12 * font.height());
}
