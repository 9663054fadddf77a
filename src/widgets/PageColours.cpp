// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/PageColours.h"

#include "widgets/Contrast.h"
#include "widgets/PageColourChoice.h"

#include <QPalette>

namespace {

/// A colour for text on a ground, the wanted one if it is readable there.
QColor TextOn(const QColor &ground, const QColor &wanted)
{
    const QColor farthest = Contrast(ground, Qt::black) > Contrast(ground, Qt::white) ? Qt::black : Qt::white;
    return WithContrast(wanted, ground, farthest, TextContrast);
}

/// The page in the colours of a desktop that wants its own everywhere. All else than text is told apart by shape.
PageColours HighContrastPage(const QPalette &desktop)
{
    const QColor ground = desktop.color(QPalette::Base);
    const QColor text = desktop.color(QPalette::Text);
    const QColor highlight = desktop.color(QPalette::Highlight);
    PageColours page = IsDarker(ground, text) ? DarkPage : LightPage;
    page.drawing = HighContrastDrawing;
    page.background = ground;
    page.text = page.answer = page.hiddenBox = page.number = text;
    page.shownBox = page.frame = page.hint = Dimmed(text, ground);
    page.focus = page.hard = page.lineMark = WithContrast(highlight, ground, text, ShapeContrast);
    page.markedNumber = TextOn(page.lineMark, desktop.color(QPalette::HighlightedText));
    page.found = WithContrast(highlight, text, ground, TextContrast); // as far from the text as that needs
    return page;
}

} // namespace

PageColours ColoursOf(PageColourChoice choice, const QPalette &desktop, bool isSystemDark)
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
    if (IsHighContrast(desktop))
        return HighContrastPage(desktop);
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

QPalette DimmedBarPalette(const QPalette &bar)
{
    QPalette dimmed = bar;
    dimmed.setColor(QPalette::WindowText,
                    WithContrast(bar.color(QPalette::PlaceholderText), bar.color(QPalette::Window),
                                 bar.color(QPalette::WindowText), TextContrast));
    return dimmed;
}

DesktopColours ColoursOn(const QPalette &desktop)
{
    const QColor window = desktop.color(QPalette::Window);
    const QColor windowText = desktop.color(QPalette::WindowText);
    const QColor base = desktop.color(QPalette::Base);
    const QColor text = desktop.color(QPalette::Text);
    const PageColours &around = IsDarker(window, windowText) ? DarkPage : LightPage;
    const PageColours &inside = IsDarker(base, text) ? DarkPage : LightPage;
    DesktopColours colours{around.accent, around.onAccent, inside.tint, text, inside.noteEdge, inside.hard};
    if (IsHighContrast(desktop)) {
        colours.accent = colours.tint = desktop.color(QPalette::Highlight);
        colours.onAccent = colours.onTint = desktop.color(QPalette::HighlightedText);
    }
    colours.accent = WithContrast(colours.accent, window, windowText, ShapeContrast);
    colours.onAccent = TextOn(colours.accent, colours.onAccent);
    colours.onTint = TextOn(colours.tint, colours.onTint);
    for (QColor *const sign : {&colours.warning, &colours.hard})
        *sign = WithContrast(*sign, base, text, ShapeContrast);
    return colours;
}
