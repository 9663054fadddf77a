// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/PageFontAtScale.h"

#include <QFontDatabase>
#include <QFontMetricsF>

#include <cmath>

PageFontAtScale::PageFontAtScale(const QFont &font, double scale) : m_font(font), m_scale(scale)
{
    m_font.setPixelSize(int(std::lround(font.pixelSize() * scale)));
    m_glyphs = QRawFont::fromFont(m_font, QFontDatabase::Japanese);
    const QFontMetricsF metrics(m_font);
    m_ascent = metrics.ascent();
    m_height = metrics.height();
}

const QRawFont &PageFontAtScale::Figures(int sizePercent, int stretchPercent)
{
    const std::pair percents(sizePercent, stretchPercent);
    if (percents == std::pair(100, 100))
        return m_glyphs;
    if (percents != m_figurePercents) {
        QFont font = m_font;
        font.setPixelSize(int(std::lround(m_font.pixelSize() * sizePercent / 100.0)));
        font.setStretch(stretchPercent);
        m_figures = QRawFont::fromFont(font, QFontDatabase::Japanese);
        m_figurePercents = percents;
    }
    return m_figures;
}

double PageFontAtScale::BaselineIn(int height) const
{
    return std::floor(m_ascent + (height - m_height) / 2);
}
