// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/Contrast.h"

#include <QPalette>

#include <algorithm>
#include <cmath>

namespace {

/// Linear intensity of an sRGB channel, both 0 to 1.
double Linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

/// Relative luminance, from 0 for black to 1 for white.
double Luminance(const QColor &colour)
{
    return 0.2126 * Linear(colour.redF()) + 0.7152 * Linear(colour.greenF()) + 0.0722 * Linear(colour.blueF());
}

} // namespace

double Contrast(const QColor &one, const QColor &other)
{
    const auto [darker, lighter] = std::minmax({Luminance(one), Luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

bool IsDarker(const QColor &one, const QColor &other)
{
    return Luminance(one) < Luminance(other);
}

QColor Mixed(const QColor &one, const QColor &other, float partOfOther)
{
    const float part = 1 - partOfOther;
    return QColor::fromRgbF(one.redF() * part + other.redF() * partOfOther,
                            one.greenF() * part + other.greenF() * partOfOther,
                            one.blueF() * part + other.blueF() * partOfOther);
}

QColor WithContrast(const QColor &wanted, const QColor &background, const QColor &text, double minimum)
{
    constexpr int steps = 20;
    for (int step = 0; step < steps; ++step) {
        const QColor colour(Mixed(wanted, text, float(step) / steps).rgb()); // rounded as pixels are
        if (Contrast(colour, background) >= minimum)
            return colour;
    }
    return text;
}

QColor Dimmed(const QColor &text, const QColor &background)
{
    return WithContrast(Mixed(background, text, 0.5f), background, text, TextContrast);
}

// Usual palettes have black text on a light grey at most, 19.2, and white on a dark one.
bool IsHighContrast(const QPalette &desktop)
{
    const QColor window = desktop.color(QPalette::Window);
    const QColor text = desktop.color(QPalette::WindowText);
    return Contrast(window, text) > (IsDarker(window, text) ? 19 : 20.5);
}
