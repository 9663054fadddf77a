// Colours that can be told from their background, whatever the palette of the desktop. Contrast is that of the Web
// Content Accessibility Guidelines: from 1, no difference, to 21, black on white.
#pragma once

#include <QColor>

constexpr double TextContrast = 4.5; ///< least contrast of a text
constexpr double ShapeContrast = 3;  ///< least contrast of a line or an area that tells something

/// Contrast between two opaque colours, in either order.
double Contrast(const QColor &one, const QColor &other);

/// Whether the first of two colours is the darker one to the eye.
bool IsDarker(const QColor &one, const QColor &other);

/// The wanted colour, moved towards the colour of the text as far as the contrast with the background asks for. Where
/// not even the text has that contrast, the colour of the text.
QColor WithContrast(const QColor &wanted, const QColor &background, const QColor &text, double least);

/// The colour of a text that is to stand back behind others and can be read all the same.
QColor Dimmed(const QColor &text, const QColor &background);
