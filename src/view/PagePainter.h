// Paints a page in pixels of the device, so that boxes and letters are sharp at every scaling of the screen.
#pragma once

#include "view/PageColours.h"
#include "view/modStudyRound.h"

#include <QList>
#include <QPointF>
#include <QRect>

class PageFontAtScale;
class QPainter;
class QRawFont;

/// All that the picture of a page depends on, beside its font.
struct PageToPaint
{
    const DisplayText &text;
    const StudyRound &round;
    const PageColours &colours;
    PageLayout layout;
    int topLine;         ///< line in the first row
    TextSpan found{};    ///< is marked; within a hidden answer its whole box is
    TextSpan current{};  ///< is framed
    int hintedBlank = 0; ///< whose first character is seen while it is hidden; 0 for none
    bool hasFocus = false;
};

/// What has to be painted anew when an answer is shown or hidden, pixels of the text area: its box, and all of a line
/// with references to pictures, which it may make or unmake. @param blank  on a line in view
QRect AreaOfBlank(const DisplayText &text, int blank, int topLine, const PageLayout &layout);

/// The same when another line is marked.
QRect AreaOfLineNumbers(const PageLayout &layout);

class PagePainter
{
  public:
    /// @param painter  of a device with as many of its pixels in one of the page as the font says; its scale and font
    /// are changed. All three must outlive this.
    PagePainter(QPainter *painter, const PageToPaint &page, PageFontAtScale *font);

    /// Paints a part of the text area from the background up, and hardly anything outside it.
    void Paint(const QRect &part);

  private:
    void DrawText(int row);
    void DrawFound(int row);
    void DrawCurrent(int row);
    void DrawBox(int blank, int row);
    void DrawCorner(const QRect &outline);
    void UnderlinePictures(int row);
    void DrawNumber(int row);
    void DrawFrame();
    void DrawCells(QStringView text, int cell, int row, const QColor &colour);
    void DrawForeign(QChar character, const QPointF &at, int width);
    void DrawRing(const QRect &edge, int width, const QColor &colour);
    void DrawGlyphs(const QRawFont &font, const QList<quint32> &glyphs, const QList<QPointF> &positions);

    int LineIn(int row) const;
    QRect BoxOf(int firstCell, int endCell, int row) const;
    int PenWidth() const;
    int Device(int px) const;
    QRect Device(const QRect &rect) const;

    QPainter &m_painter;
    const PageToPaint &m_page;
    const PageLayout &m_layout;
    const PageColours &m_colours;
    PageFontAtScale &m_font;
    int m_leftPx = 0; // what is painted lies between these
    int m_rightPx = 0;
    double m_scale;
    double m_baseline; // from the top of a row
};
