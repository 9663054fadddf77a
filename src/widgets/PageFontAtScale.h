// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The page's font in device pixels.
#pragma once

#include <QFont>
#include <QRawFont>

#include <utility>

class PageFontAtScale
{
  public:
    /// @param font  of the page, in logical pixels; @param scale  device pixels per logical pixel
    PageFontAtScale(const QFont &font, double scale);

    double Scale() const
    {
        return m_scale;
    }

    const QFont &Font() const
    {
        return m_font;
    }

    const QRawFont &Glyphs() const
    {
        return m_glyphs;
    }

    /// The glyphs of line numbers, smaller and narrowed to percentages of the font's size and of their width. The font
    /// for the last percentages is cached; scaling the painter instead would make it rasterise every glyph again.
    const QRawFont &Figures(int sizePercent, int stretchPercent);

    /// Distance from the top of a row to its baseline if the text is centred in the given height.
    double BaselineIn(int height) const;

  private:
    QFont m_font;
    double m_scale;
    QRawFont m_glyphs;
    QRawFont m_figures;
    std::pair<int, int> m_figurePercents; // size and stretch
    double m_ascent;
    double m_height;
};
