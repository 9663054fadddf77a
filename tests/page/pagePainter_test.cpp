// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "page/PagePainter.h"
#include "support/StudyText.h"
#include "widgets/PageFont.h"
#include "widgets/PageFontAtScale.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The page's font at the size that fits a layout.
QFont FontFor(const PageLayout &layout)
{
    QFont font = PageFont();
    font.setPixelSize(layout.cellWidthPx * 15 / 8);
    return font;
}

/// A page and its image, painted incrementally like the text area.
class PaintedPage
{
  public:
    PaintedPage(const QStringList &lines, double scale, int topLine = 1, const PageColours &colours = LightPage,
                const PageLayout &layout = Layout)
        : text(LinesOf(lines)),
          page{.text = text, .round = round, .colours = colours, .layout = layout, .topLine = topLine},
          m_font(FontFor(layout), scale), m_image((QSizeF(Whole.size()) * scale).toSize(), QImage::Format_RGB32)
    {
        round.Load(text.Blanks().Count());
        m_image.setDevicePixelRatio(scale);
        Paint(&m_image, Whole);
    }

    void Toggle(int blank)
    {
        round.Toggle(blank);
        Paint(&m_image, AreaOfBlank(text, blank, page.topLine, page.layout));
    }

    void Mark(int line)
    {
        round.MarkLine(line);
        Paint(&m_image, AreaOfLineNumbers(Layout));
    }

    const QImage &Incremental() const
    {
        return m_image;
    }

    /// The same page painted from scratch.
    QImage FromScratch()
    {
        QImage image = m_image;
        image.fill(Qt::red);
        Paint(&image, Whole);
        return image;
    }

    void RepaintAll()
    {
        m_image = FromScratch();
    }

    static constexpr PageLayout Layout{
        .cellWidthPx = 8, .linePitchPx = 20, .widthPx = 400, .heightPx = 205, .hasLineNumbers = true};
    static constexpr QRect Whole{0, 0, 400, 205};

    DisplayText text;
    StudyRound round;
    PageToPaint page;

  private:
    void Paint(QImage *image, const QRect &part)
    {
        QPainter painter(image);
        painter.setClipRect(part); // as the window system does
        PagePainter(&painter, page, &m_font).Paint(part);
    }

    PageFontAtScale m_font;
    QImage m_image;
};

constexpr double Scales[] = {1, 1.25, 1.5, 2};

/// The page at 300 %, scrolled sideways so far that a box begins out of view.
constexpr PageLayout Large{
    .cellWidthPx = 24, .linePitchPx = 60, .widthPx = 400, .heightPx = 205, .leftCell = 3, .hasLineNumbers = true};

void ExpectNoPixelBehind(const PageColours &colours, const PageLayout &layout, double scale)
{
    // Includes an answer inside a picture reference, so that toggling it changes the reference too.
    PaintedPage page(QStringList({u"[漢字 Wij] text [二つ目]"_s}) + QStringList(9, u"[次の行][b] ｢[x]図｣"_s), scale, 1,
                     colours, layout);
    const QImage hidden = page.Incremental();
    page.Toggle(1);
    EXPECT_NE(page.Incremental(), hidden);
    page.Toggle(1);
    EXPECT_EQ(page.Incremental(), hidden) << scale;
    for (int blank = 1; blank <= page.text.Blanks().Count(); ++blank) {
        page.Toggle(blank);
        EXPECT_EQ(page.Incremental(), page.FromScratch())
            << "blank " << blank << " looks different when painted alone, scale " << scale;
    }
    for (int blank = 1; blank <= page.text.Blanks().Count(); ++blank)
        page.Toggle(blank);
    EXPECT_EQ(page.Incremental(), hidden) << scale;
}

} // namespace

TEST(PagePainter, AnswerHiddenAgain_LeavesNoPixelBehind)
{
    for (const double scale : Scales)
        for (const PageColours *const colours : {&LightPage, &DarkPage})
            for (const PageLayout &layout : {PaintedPage::Layout, Large})
                ExpectNoPixelBehind(*colours, layout, scale);
}

TEST(PagePainter, BlankBesideFrame_RepaintLeavesFrameIntact)
{
    for (const double scale : Scales) {
        PaintedPage page(QStringList(10, u"[次の行] ｢図｣ [b]"_s), scale);
        for (const TextSpan &current : {TextSpan{2, 1, 5}, TextSpan{2, 7, 3}, TextSpan{2, 11, 3}}) {
            page.page.current = current;
            const QImage before = page.Incremental();
            page.RepaintAll();
            EXPECT_NE(page.Incremental(), before) << "the frame is visible";
            for (int blank = 1; blank <= 6; ++blank) {
                page.Toggle(blank);
                EXPECT_EQ(page.Incremental(), page.FromScratch())
                    << current.column << " blank " << blank << " at " << scale;
            }
        }
    }
}

TEST(PagePainter, LongLineNumber_IsMarkedAndNarrowed)
{
    for (const double scale : Scales) {
        PaintedPage page(QStringList(10'020, u"[a] x"_s), scale, 10'000);
        const QImage before = page.Incremental();
        page.Mark(10'002);
        EXPECT_EQ(page.Incremental(), page.FromScratch()) << scale;
        const auto row = [scale](const QImage &image, int n) {
            return image.copy(
                QRectF(QPointF(0, PaintedPage::Layout.RowTopPx(n)) * scale,
                       QSizeF(PaintedPage::Layout.NumberStripPx(), PaintedPage::Layout.linePitchPx) * scale)
                    .toRect());
        };
        EXPECT_NE(row(page.Incremental(), 3), row(before, 3)) << "the mark is visible";
        EXPECT_EQ(row(page.Incremental(), 4), row(before, 4));
        for (int y = int(100 * scale); y < int(200 * scale); ++y)
            for (int x = int(std::ceil(2 * scale)); x < int(4 * scale); ++x)
                ASSERT_EQ(page.Incremental().pixel(x, y), QColor(Qt::white).rgb()) << "no digit is cut off";
    }
}

TEST(PagePainter, PartialRow_IsNotPainted)
{
    PageLayout layout = PaintedPage::Layout;
    layout.heightPx = layout.RowTopPx(3) + 15;
    PaintedPage page(QStringList(10, u"[x] text"_s), 1, 1, LightPage, layout);
    const QRect belowTheSecondRow(2, layout.RowTopPx(3), 396, 13);
    QImage blank = page.Incremental().copy(belowTheSecondRow);
    blank.fill(Qt::white);
    for (int y = 0; y < blank.height(); ++y)
        blank.setPixelColor(layout.NumberStripPx() - 2, y, LightPage.stripEdge);
    EXPECT_EQ(page.Incremental().copy(belowTheSecondRow), blank);
}

TEST(PagePainter, HitInHiddenAnswer_MarksWholeBox)
{
    PaintedPage page({u"-"_s, u"[the cities] cities"_s}, 1);
    page.page.found = {2, 6, 6};
    page.RepaintAll();
    const auto pixel = [&page](int cell) {
        return page.Incremental().pixel(PaintedPage::Layout.TextLeftPx() + cell * 8 + 3,
                                        PaintedPage::Layout.RowTopPx(2) + 9);
    };
    const QRgb mark = pixel(0);
    EXPECT_NE(mark, QColor(Qt::white).rgb());
    for (int cell = 0; cell < 12; ++cell)
        EXPECT_EQ(pixel(cell), mark) << "the mark reveals nothing of the answer";
    page.round.Toggle(1);
    page.RepaintAll();
    EXPECT_NE(pixel(0), mark) << "in a shown answer only the hit is marked";
}
