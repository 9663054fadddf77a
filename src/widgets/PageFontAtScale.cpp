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

const QRawFont &PageFontAtScale::NarrowGlyphs(int percent)
{
    if (percent != m_narrowPercent) {
        QFont font = m_font;
        font.setStretch(percent);
        m_narrowGlyphs = QRawFont::fromFont(font, QFontDatabase::Japanese);
        m_narrowPercent = percent;
    }
    return m_narrowGlyphs;
}

double PageFontAtScale::BaselineIn(int height) const
{
    return std::floor(m_ascent + (height - m_height) / 2);
}
