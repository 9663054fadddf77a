// The page's font in pixels of the device.
#pragma once

#include <QFont>
#include <QRawFont>

class PageFontAtScale
{
  public:
    /// @param font  of the page, in its own pixels; @param scale  pixels of the device in one of them
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

    /// The glyphs narrowed to a share of their width, in percent. The font of the last share is kept: a painter that
    /// is scaled instead would draw each glyph anew.
    const QRawFont &NarrowGlyphs(int percent);

    /// From the top of a row to its baseline, when the letters stand in the middle of the given height.
    double BaselineIn(int height) const;

  private:
    QFont m_font;
    double m_scale;
    QRawFont m_glyphs;
    QRawFont m_narrowGlyphs;
    int m_narrowPercent = 0;
    double m_ascent;
    double m_height;
};
