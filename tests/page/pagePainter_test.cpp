// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "page/PagePainter.h"
#include "page/picText.h"
#include "support/Rows.h"
#include "support/StudyText.h"
#include "support/WaitFor.h"
#include "widgets/PageColourChoice.h"
#include "widgets/PageFont.h"
#include "widgets/PageFontAtScale.h"

#include <QGuiApplication>
#include <QImage>
#include <QLineEdit>
#include <QPainter>
#include <QScreen>

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
        : text(LinesOf(lines)), view(PageAt(topLine, text, layout)),
          page{.text = text, .round = round, .colours = colours, .layout = layout, .view = view},
          m_font(FontFor(layout), scale), m_image((QSizeF(Whole.size()) * scale).toSize(), QImage::Format_RGB32)
    {
        round.Load(text.Blanks().Count());
        m_image.setDevicePixelRatio(scale);
        Paint(&m_image, Whole);
    }

    void Toggle(int blank)
    {
        round.Toggle(blank);
        Paint(&m_image, AreaOfBlank(text, blank, view, page.layout));
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
    PageInView view;
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
constexpr const PageColours *AllColours[] = {&LightPage, &DarkPage, &SoftPage, &SoftDarkPage};

/// The page at 300 %, scrolled sideways so far that a box begins out of view.
constexpr PageLayout Large{
    .cellWidthPx = 24, .linePitchPx = 60, .widthPx = 400, .heightPx = 205, .leftCell = 3, .hasLineNumbers = true};

/// A page so narrow that lines wrap and the first blank is broken.
constexpr PageLayout Narrow{
    .cellWidthPx = 16, .linePitchPx = 40, .widthPx = 250, .heightPx = 205, .hasLineNumbers = true, .isWrapping = true};

void ExpectNoPixelBehind(const PageColours &colours, const PageLayout &layout, double scale)
{
    // Includes an answer inside a picture reference, so that toggling it changes the reference too.
    PaintedPage page(QStringList({u"[漢字 Wij] text [二つ目]"_s}) + QStringList(9, u"[次の行][b] ｢[x]図｣"_s), scale, 1,
                     colours, layout);
    page.page.nextBlank = 3;
    page.page.hintedBlank = 2;
    page.RepaintAll();
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
        for (const PageColours *const colours : AllColours)
            for (const PageLayout &layout : {PaintedPage::Layout, Large, Narrow})
                ExpectNoPixelBehind(*colours, layout, scale);
}

TEST(PagePainter, DifferentHiddenAnswers_LookTheSame)
{
    for (const PageColours *const colours : AllColours) {
        const auto painted = [colours](const QString &answers) {
            PaintedPage page({answers}, 1.25, 1, *colours);
            page.page.nextBlank = 1;
            page.page.found = {1, 2, 1};
            page.round.ToggleHard(2);
            page.RepaintAll();
            return page.Incremental();
        };
        EXPECT_EQ(painted(u"[漢字] [Wij]"_s), painted(u"[電子] [___]"_s));
    }
}

TEST(PagePainter, BlankBesideFrame_RepaintLeavesFrameIntact)
{
    for (const double scale : Scales) {
        PaintedPage page(QStringList(10, u"[次の行] ｢図｣ [b]"_s), scale, 1, scale < 2 ? LightPage : SoftPage);
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
        blank.setPixelColor(layout.NumberStripPx() - 2, y, LightPage.frame);
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

namespace {

int CountOf(const QImage &image, const QRect &area, const QColor &colour)
{
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            count += image.pixelColor(x, y) == colour ? 1 : 0;
    return count;
}

} // namespace

TEST(PagePainter, Zoom_WidensLinesExceptOnLightPage)
{
    PageColours highContrast = DarkPage;
    highContrast.drawing = HighContrastDrawing;
    const Rows<const PageColours *, int, int> rows = {
        {&LightPage, 100, 1},    {&LightPage, 200, 1},    {&DarkPage, 100, 1}, {&DarkPage, 175, 1},
        {&DarkPage, 200, 2},     {&DarkPage, 300, 3},     {&SoftPage, 100, 1}, {&SoftDarkPage, 250, 2},
        {&highContrast, 100, 2}, {&highContrast, 300, 3},
    };
    for (const auto &[colours, percent, width] : rows) {
        PaintedPage page({u"[あああ]"_s}, 1, 1, *colours);
        page.page.zoomPercent = percent;
        page.RepaintAll();
        const int middle = PaintedPage::Layout.CellLeftPx(4);
        const QRect upperHalf(middle, PaintedPage::Layout.RowTopPx(1), 1, PaintedPage::Layout.linePitchPx / 2);
        EXPECT_EQ(CountOf(page.Incremental(), upperHalf, colours->hiddenBox), width) << percent;
    }
}

TEST(PagePainter, SoftBoxes_StayInsideCellsAndShowWhatIsNext)
{
    for (const PageColours *const colours : {&SoftPage, &SoftDarkPage}) {
        PaintedPage page({u"[ああ][いい]"_s, u"[■■]"_s}, 1, 1, *colours);
        const PageLayout &layout = PaintedPage::Layout;
        const auto cells = [](int first, int end, int row) {
            return QRect(layout.CellLeftPx(first), layout.RowTopPx(row), (end - first) * layout.cellWidthPx,
                         layout.linePitchPx);
        };
        const auto count = [&page](const QRect &area, const QColor &colour) {
            return CountOf(page.Incremental(), area, colour);
        };
        // A third of a cell on both sides of the edge where two boxes meet.
        const QRect between(layout.CellLeftPx(6) - 3, layout.RowTopPx(1), 6, layout.linePitchPx);
        EXPECT_EQ(count(between, colours->background), between.width() * between.height());
        EXPECT_GT(count(cells(0, 6, 1), colours->fill), 300);
        EXPECT_EQ(count(cells(0, 12, 1), colours->next), 0);

        page.page.nextBlank = 2;
        page.RepaintAll();
        EXPECT_EQ(count(cells(0, 6, 1), colours->next), 0);
        EXPECT_EQ(count(cells(6, 12, 1), colours->fill), 0);
        const QRect middle(layout.CellLeftPx(6), layout.RowTopPx(1) + 9, 6 * layout.cellWidthPx, 1);
        const int rightEdge = 2;
        EXPECT_GE(count(middle, colours->next), rightEdge + 4) << "the left edge is thick";
        EXPECT_LT(count(middle, colours->next), rightEdge + layout.cellWidthPx) << "and leaves room for a hint";

        page.Toggle(3);
        EXPECT_EQ(count(cells(0, 6, 2), colours->fill), 0);
        EXPECT_GT(count(cells(0, 6, 2), colours->answer), 20);
        const int inside = 6 * layout.cellWidthPx - 6;
        EXPECT_EQ(count(cells(0, 6, 2), colours->shownBox), 2 * inside) << "a line below it";
    }
}

TEST(PicText, SoftColours_EnterMovesTheNextBoxWhileThePageHasTheFocus)
{
    if (QGuiApplication::platformName() != u"offscreen")
        GTEST_SKIP() << "something may cover the window";
    StudyPage study;
    study.Load(DisplayText(LinesOf({u"[ああ] [いい]"_s, u"[うう]"_s})), {}, 0);
    QWidget window;
    PicText page(study, &window);
    QLineEdit elsewhere(&window);
    page.setGeometry(0, 0, 300, 100);
    elsewhere.setGeometry(0, 100, 100, 30);
    page.SetAppearance(9.75f, 4, true, true, 100);
    page.SetPageColour(PageColourChoice::Soft);
    std::ignore = study.SetLayout(page.Measured());
    window.resize(300, 140);
    window.show();
    window.activateWindow();
    page.setFocus(Qt::OtherFocusReason);
    ASSERT_TRUE(WaitFor([&page] { return page.hasFocus(); }));
    const PageLayout &layout = page.Layout();
    // As it is on the screen, where only what changed is painted again.
    const auto image = [&window, &page] {
        QCoreApplication::sendPostedEvents();
        return window.screen()->grabWindow(window.winId()).toImage().copy(page.geometry());
    };
    const auto next = [&](int firstCell, int row) {
        const QRect box(layout.CellLeftPx(firstCell), layout.RowTopPx(row), 6 * layout.cellWidthPx, layout.linePitchPx);
        return CountOf(image(), box, SoftPage.next) > 0;
    };
    EXPECT_TRUE(next(0, 1));
    for (const int blank : {1, 2}) {
        page.Show(study.Enter());
        EXPECT_EQ(next(0, 1), false);
        EXPECT_EQ(next(7, 1), blank == 1);
        EXPECT_EQ(next(0, 2), blank == 2);
        const QImage incremental = image();
        page.update();
        EXPECT_EQ(image(), incremental);
    }
    EXPECT_EQ(CountOf(image(), page.rect(), SoftPage.focus), 0) << "the box is the mark of the focus";
    elsewhere.setFocus();
    EXPECT_FALSE(next(0, 2));
    page.setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(next(0, 2));
    EXPECT_GT(CountOf(image(), page.rect(), SoftPage.focus), 1000) << "a ring as well, as around other controls";
}

TEST(PagePainter, BlankWiderThanRow_IsOpenAtTheBreak)
{
    // Nine cells in a row: ああ, then two rows of the blank.
    for (const PageColours *const colours : AllColours) {
        PaintedPage page({u"ああ[いいいいいい]え"_s}, 1, 1, *colours, Narrow);
        page.round.ToggleHard(1);
        page.RepaintAll();
        const QImage &image = page.Incremental();
        // Pixels of the outline in a column of a row.
        const auto painted = [&](int row, int cell, int shift) {
            int count = 0;
            for (int y = Narrow.RowTopPx(row); y < Narrow.RowTopPx(row + 1) - 3; ++y)
                count += int(image.pixel(Narrow.CellLeftPx(cell) + shift, y) == colours->hiddenBox.rgb());
            return count;
        };
        EXPECT_EQ(page.view.rows.size(), 3u);
        const int edge = painted(2, 0, colours->drawing.isSoft ? 5 : 0);
        const int within = painted(2, 4, 0);
        EXPECT_GT(edge, 20);
        EXPECT_EQ(painted(2, 8, 15), within) << "no right edge in the upper row";
        EXPECT_EQ(painted(3, 0, 0), within) << "no left edge in the lower row";
        EXPECT_GT(painted(3, 4, colours->drawing.isSoft ? 10 : 16), within) << "a right edge there";
        const auto hasCorner = [&](int row) {
            const QRect rowArea(Narrow.TextLeftPx(), Narrow.RowTopPx(row), 157, Narrow.linePitchPx);
            const QImage part = image.copy(rowArea);
            for (int y = 0; y < part.height(); ++y)
                for (int x = 0; x < part.width(); ++x)
                    if (part.pixel(x, y) == colours->hard.rgb())
                        return true;
            return false;
        };
        EXPECT_FALSE(hasCorner(2)) << "the mark of a hard blank stands on the last part";
        EXPECT_TRUE(hasCorner(3));
    }
}
