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

/// A length in ems: IconGap(font) are its pixels.
struct EmLength
{
    double ems;

    int operator()(const QFontMetrics &font) const
    {
        return Ems(font, ems);
    }
};

/// A height for one line of text: ButtonHeight(font) are its pixels.
struct LineHeight
{
    int extraPx; ///< beside the line

    int operator()(const QFontMetrics &font) const
    {
        return font.height() + extraPx;
    }
};

constexpr LineHeight BarHeight{20};      ///< of a bar of commands
constexpr LineHeight StateBarHeight{14}; ///< of the row below a page
constexpr LineHeight PageOnlyHeight{6};  ///< of that row while nothing else is around the page
constexpr LineHeight ButtonHeight{10};   ///< of the face of a button

constexpr EmLength BarButtonMargin{0.55}; ///< at the left and right end of a button in a bar
constexpr EmLength ButtonMargin{0.9};     ///< at those of a button in a window
constexpr EmLength FieldMargin{0.5};      ///< at those of a field
constexpr EmLength IndicatorSize{1.15};   ///< side of the square of a check box or radio button
constexpr EmLength IndicatorGap{0.5};     ///< between that and its text
constexpr EmLength ControlGap{0.6};       ///< between controls that belong together
constexpr EmLength GroupGap{0.9};         ///< between groups of controls
constexpr EmLength IconSize{1.25};        ///< side of the square of an icon
constexpr EmLength MenuArrowSize{0.75};   ///< side of the square of the arrow that opens a menu
constexpr EmLength MenuArrowMargin{0.2};  ///< at both sides of that arrow, if it is a button of its own
constexpr EmLength IconGap{0.4};          ///< between an icon and its text

constexpr double IndicatorLineWidth = 1.5;

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
