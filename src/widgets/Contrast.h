// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Colours that stand out from their background whatever the palette of the desktop. Contrast is defined as in the Web
// Content Accessibility Guidelines: from 1, no difference, to 21, black on white.
#pragma once

#include <QColor>

class QPalette;

constexpr double TextContrast = 4.5; ///< minimum for text
constexpr double ShapeContrast = 3;  ///< minimum for lines and areas that carry meaning

/// Contrast between two opaque colours, in either order, by the upper 8 bits of their channels, as they are painted.
double Contrast(const QColor &one, const QColor &other);

/// Whether the first of two colours has the lower luminance.
bool IsDarker(const QColor &one, const QColor &other);

/// A colour between two others. @param partOfOther  0 for the first one, 1 for the other
QColor Mixed(const QColor &one, const QColor &other, float partOfOther);

/// The wanted colour, shifted towards the text colour as far as needed for a contrast with the background; the text
/// colour itself if not even that has enough. @param minimum  contrast to reach
QColor WithContrast(const QColor &wanted, const QColor &background, const QColor &text, double minimum);

/// The colour of secondary text: less prominent, but readable.
QColor Dimmed(const QColor &text, const QColor &background);

/// Whether a desktop's palette asks for its own colours everywhere.
bool IsHighContrast(const QPalette &desktop);
