// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/Contrast.h"

#include <QPalette>

#include <algorithm>
#include <array>

namespace {

/// For values from 0.05 to 1. Calculated by the compiler, so that no start has to.
constexpr double ToThePower2_4(double value)
{
    const double square = value * value;
    double fifthRoot = 1; // of the square, by Newton's method
    for (int step = 0; step < 20; ++step)
        fifthRoot = (4 * fifthRoot + square / (fifthRoot * fifthRoot * fifthRoot * fifthRoot)) / 5;
    return square * fifthRoot;
}

/// Linear intensity of each 8-bit value of an sRGB channel, from 0 to 1.
constexpr std::array<double, 256> Linear = [] {
    std::array<double, 256> linear{};
    for (size_t value = 0; value < linear.size(); ++value) {
        const double channel = double(value) / 255;
        linear[value] = channel <= 0.04045 ? channel / 12.92 : ToThePower2_4((channel + 0.055) / 1.055);
    }
    return linear;
}();

/// Relative luminance, from 0 for black to 1 for white.
double Luminance(const QColor &colour)
{
    return 0.2126 * Linear[size_t(colour.red())] + 0.7152 * Linear[size_t(colour.green())] +
           0.0722 * Linear[size_t(colour.blue())];
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
