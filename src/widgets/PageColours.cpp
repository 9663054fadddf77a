// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/PageColours.h"

#include "widgets/Contrast.h"
#include "widgets/PageColourChoice.h"

#include <QPalette>

const PageColours &ColoursOf(PageColourChoice choice, const QPalette &desktop, bool isSystemDark)
{
    switch (choice) {
    case PageColourChoice::Light:
        return LightPage;
    case PageColourChoice::Dark:
        return DarkPage;
    case PageColourChoice::Soft:
        return SoftPage;
    case PageColourChoice::SoftDark:
        return SoftDarkPage;
    case PageColourChoice::Desktop:
        break;
    }
    const bool isDark = IsDarker(desktop.color(QPalette::Window), desktop.color(QPalette::WindowText)) || isSystemDark;
    return isDark ? DarkPage : LightPage;
}

QPalette BarPalette(const PageColours &colours)
{
    QPalette palette(colours.bar, colours.bar); // with the shades between them
    palette.setColor(QPalette::WindowText, colours.barText);
    palette.setColor(QPalette::ButtonText, colours.barText);
    palette.setColor(QPalette::Base, colours.background);
    palette.setColor(QPalette::Text, colours.text);
    palette.setColor(QPalette::AlternateBase, colours.tint);
    palette.setColor(QPalette::Mid, colours.line);
    palette.setColor(QPalette::Shadow, colours.edge);
    palette.setColor(QPalette::PlaceholderText, colours.dim);
    palette.setColor(QPalette::ToolTipBase, colours.note);
    palette.setColor(QPalette::ToolTipText, colours.noteText);
    palette.setColor(QPalette::BrightText, colours.noteEdge);
    palette.setColor(QPalette::Highlight, colours.accent);
    palette.setColor(QPalette::HighlightedText, colours.onAccent);
    palette.setColor(QPalette::Link, colours.accent);
    return palette;
}

DesktopColours ColoursOn(const QPalette &desktop)
{
    const QColor window = desktop.color(QPalette::Window);
    const QColor windowText = desktop.color(QPalette::WindowText);
    const QColor base = desktop.color(QPalette::Base);
    const QColor text = desktop.color(QPalette::Text);
    const PageColours &around = IsDarker(window, windowText) ? DarkPage : LightPage;
    const PageColours &inside = IsDarker(base, text) ? DarkPage : LightPage;
    DesktopColours colours{around.accent, around.onAccent, inside.tint, text, inside.noteEdge};
    if (IsHighContrast(desktop)) {
        colours.accent = colours.tint = desktop.color(QPalette::Highlight);
        colours.onAccent = colours.onTint = desktop.color(QPalette::HighlightedText);
    }
    const auto farthestFrom = [](const QColor &ground) {
        return Contrast(ground, Qt::black) > Contrast(ground, Qt::white) ? QColor(Qt::black) : QColor(Qt::white);
    };
    colours.accent = WithContrast(colours.accent, window, windowText, ShapeContrast);
    colours.onAccent = WithContrast(colours.onAccent, colours.accent, farthestFrom(colours.accent), TextContrast);
    colours.onTint = WithContrast(colours.onTint, colours.tint, farthestFrom(colours.tint), TextContrast);
    colours.warning = WithContrast(colours.warning, base, text, ShapeContrast);
    return colours;
}
