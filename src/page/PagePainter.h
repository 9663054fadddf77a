// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Paints a page in device pixels, so that boxes and text are sharp at every screen scaling.
#pragma once

#include "study/modStudyRound.h"
#include "widgets/PageColours.h"

#include <QList>
#include <QPointF>
#include <QRect>

class PageFontAtScale;
class QPainter;
class QRawFont;

/// Everything that the appearance of a page depends on, except its font.
struct PageToPaint
{
    const DisplayText &text;
    const StudyRound &round;
    const PageColours &colours;
    PageLayout layout;
    const PageInView &view;
    TextSpan found{};    ///< to mark; if within a hidden answer, its whole box is marked
    TextSpan current{};  ///< to frame
    int hintedBlank = 0; ///< hidden blank whose first characters are shown; 0 for none
    int hintLength = 1;  ///< how many
    int nextBlank = 0;   ///< hidden blank that Enter opens, to tell apart if the colours are soft; 0 for none
    int zoomPercent = 100;
    bool hasFocusRing = false; ///< around the page
};

/// The area to repaint when an answer is shown or hidden, in pixels of the text area: its box, or the whole line if
/// that has picture references, which may appear or disappear. @param blank  on a line in view
QRect AreaOfBlank(const DisplayText &text, int blank, const PageInView &page, const PageLayout &layout);

/// The area to repaint when another line is marked.
QRect AreaOfLineNumbers(const PageLayout &layout);

class PagePainter
{
  public:
    /// @param painter  of a device with the font's scale; its transformation and font are changed. All three arguments
    /// must outlive this object.
    PagePainter(QPainter *painter, const PageToPaint &page, PageFontAtScale *font);

    /// Paints a part of the text area, including its background, and hardly anything outside it.
    void Paint(const QRect &part);

  private:
    void DrawText(int row);
    void DrawFound(int row);
    void DrawCurrent(int row);
    void DrawBlank(int blank, int row);
    void DrawOutline(const QRect &box, bool isShown);
    void DrawSoftBox(const QRect &box, int blank, bool isFound);
    void DrawCorner(const QRect &box);
    void UnderlinePictures(int row);
    void DrawNumber(int row);
    void DrawFrame();
    void DrawCells(QStringView text, int cell, int row, const QColor &colour);
    void DrawForeign(QChar character, const QPointF &at, int width);
    template <typename Draw>
    void DrawOpen(const QRect &box, const CellRange &cells, int row, Draw draw);
    void DrawRing(const QRect &edge, int width, const QColor &colour);
    void DrawGlyphs(const QRawFont &font, const QList<quint32> &glyphs, const QList<QPointF> &positions);

    const PageRow &RowAt(int row) const;
    QRect AreaOf(const CellRange &cells, int row) const;
    QRect BoxOf(int blank, int row) const;
    bool IsFoundHidden(int blank) const;
    int LinePx() const;
    int PenWidth() const;
    double FontSizes(double count) const;
    int Device(int px) const;
    QRect Device(const QRect &rect) const;

    QPainter &m_painter;
    const PageToPaint &m_page;
    const PageLayout &m_layout;
    const PageColours &m_colours;
    PageFontAtScale &m_font;
    int m_leftPx = 0; // bounds of what is painted
    int m_rightPx = 0;
    double m_scale;
    double m_baseline; // from the top of a row
};
