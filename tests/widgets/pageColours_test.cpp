// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "support/Rows.h"
#include "support/WaitFor.h"
#include "widgets/Contrast.h"
#include "widgets/OutlinedStyle.h"
#include "widgets/PageColourChoice.h"
#include "widgets/PageColours.h"
#include "widgets/PaintedIcon.h"
#include "widgets/ScreenFit.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QFocusFrame>
#include <QImage>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOption>
#include <QTest>
#include <QVBoxLayout>

#include <cmath>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

const Rows<const char *, QColor, QColor> Desktops = {
    {"light", Qt::white, Qt::black},
    {"grey", QColor(239, 239, 239), Qt::black},
    {"dark", QColor(27, 30, 32), Qt::white},
    {"high contrast, black", Qt::black, Qt::white},
    {"high contrast, yellow", Qt::black, Qt::yellow},
};

/// A palette of two colours, in which disabled captions have that of the window.
QPalette PaletteOf(const QColor &window, const QColor &text)
{
    QPalette palette(text, window, window, window, window, text, text, window, window);
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, window);
    return palette;
}

bool HasVisiblePixel(const QImage &image, const QColor &background)
{
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (Contrast(image.pixelColor(x, y), background) >= ShapeContrast)
                return true;
    return false;
}

} // namespace

TEST(PageColours, EveryChoice_ReachesMinimumContrast)
{
    EXPECT_NEAR(Contrast(Qt::black, Qt::white), 21, 0.001);
    EXPECT_NEAR(Contrast(Qt::white, QColor(0x77, 0x77, 0x77)), 4.478, 0.001) << "a grey just below the minimum";
    std::vector<PageColours> choices = {LightPage, DarkPage, SoftPage, SoftDarkPage};
    for (const auto &[name, window, text] : Desktops) {
        for (const QColor &highlight : {QColor(Qt::yellow), QColor(48, 140, 198), QColor(0, 0, 128), window, text}) {
            QPalette desktop = PaletteOf(window, text);
            desktop.setColor(QPalette::Highlight, highlight);
            desktop.setColor(QPalette::HighlightedText, window);
            choices.push_back(ColoursOf(PageColourChoice::Desktop, desktop, false));
        }
    }
    for (const PageColours &page : choices) {
        // Desktops of high contrast have bars in their own colours.
        const QColor ground = page.drawing == HighContrastDrawing ? page.background : page.bar;
        Rows<const char *, QColor, QColor, double> rows = {
            {"text", page.text, page.background, TextContrast},
            {"text in a hit", page.text, page.found, TextContrast},
            {"shown answer", page.answer, page.background, TextContrast},
            {"shown answer in a hit", page.answer, page.found, TextContrast},
            {"line number", page.number, page.background, TextContrast},
            {"marked line number", page.markedNumber, page.lineMark, TextContrast},
            {"hidden answer", page.hiddenBox, page.background, ShapeContrast},
            {"hidden answer in a hit", page.answer, page.found, ShapeContrast},
            {"box or line of a shown answer", page.shownBox, page.background, ShapeContrast},
            {"mark of a line", page.lineMark, page.background, ShapeContrast},
            {"edge with the focus and ring around the current target", page.focus, page.background, ShapeContrast},
            {"corner of a hard blank", page.hard, page.background, ShapeContrast},
            {"bar", page.barText, page.bar, TextContrast},
            {"pressed in a bar", page.barText, page.tint, TextContrast},
            {"secondary text in a bar", page.dim, page.bar, TextContrast},
            {"secondary text in a chosen row", page.dim, page.tint, TextContrast},
            {"edge of what is pressed", page.accent, page.bar, ShapeContrast},
            {"chosen", page.onAccent, page.accent, TextContrast},
            {"ticked command about hard blanks", page.hardText, page.hardTint, TextContrast},
            {"edge of that", page.hardText, page.bar, ShapeContrast},
            {"corner of its icon", page.hard, ground, ShapeContrast},
            {"outline of controls", page.edge, page.bar, ShapeContrast},
            {"notice", page.noteText, page.note, TextContrast},
            {"edge of a notice", page.noteEdge, page.bar, ShapeContrast},
        };
        if (page.drawing.isSoft)
            rows.insert(rows.end(), {{"hint", page.hint, page.fill, TextContrast},
                                     {"hint in the next box", page.hint, page.nextFill, TextContrast},
                                     {"next box", page.next, page.background, ShapeContrast},
                                     {"edge of the next box", page.next, page.nextFill, ShapeContrast},
                                     {"next box among others", page.next, page.fill, ShapeContrast},
                                     {"corner of a hard box", page.hard, page.fill, ShapeContrast},
                                     {"corner of the next box", page.hard, page.nextFill, ShapeContrast}});
        else
            rows.insert(rows.end(), {{"hint", page.hint, page.background, TextContrast},
                                     {"mark of a hit", page.drawing.hasRingAtHit ? page.answer : page.found,
                                      page.background, ShapeContrast},
                                     {"edges of page and numbers", page.frame, page.background, ShapeContrast}});
        for (const auto &[name, colour, background, minimum] : rows)
            EXPECT_GE(Contrast(colour, background), minimum) << name << ' ' << page.background.name().toStdString();
    }
}

TEST(PageColours, FollowingDesktopOfHighContrast_AreItsOwn)
{
    for (const auto &[name, window, text] : Desktops) {
        const QPalette desktop = PaletteOf(window, text);
        const PageColours page = ColoursOf(PageColourChoice::Desktop, desktop, true);
        EXPECT_EQ(page.drawing.leastLinePx, IsHighContrast(desktop) ? 2 : 1) << name;
        if (IsHighContrast(desktop)) {
            EXPECT_EQ(page.background, window) << name;
            EXPECT_EQ(page.text, text) << name;
        } else {
            EXPECT_EQ(page, DarkPage) << name;
        }
        EXPECT_EQ(ColoursOf(PageColourChoice::Soft, desktop, true), SoftPage) << "as the user has chosen, " << name;
    }
}

TEST(Contrast, EveryDesktop_ReachesMinimum)
{
    for (const auto &[name, background, text] : Desktops) {
        for (const QColor &wanted : {QColor(120, 160, 210), QColor(200, 90, 40), QColor(150, 150, 150), background})
            EXPECT_GE(Contrast(WithContrast(wanted, background, text, ShapeContrast), background), ShapeContrast)
                << name;
        EXPECT_GE(Contrast(Dimmed(text, background), background), TextContrast) << name;
        EXPECT_NE(Dimmed(text, background), text) << name;
    }
    EXPECT_EQ(WithContrast(Qt::blue, Qt::white, Qt::black, ShapeContrast), QColor(Qt::blue))
        << "its contrast is already sufficient";
}

TEST(Contrast, EveryGrey_IsAsDefined)
{
    for (int value = 0; value < 256; ++value) {
        const double channel = value / 255.0;
        const double linear = channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
        EXPECT_NEAR(Contrast(QColor(value, value, value), Qt::black), (linear + 0.05) / 0.05, 1e-9) << value;
    }
}

namespace {

/// The program's style for the length of a test.
class ProgramStyle
{
  public:
    ProgramStyle() : m_before(QApplication::style()->name())
    {
        QApplication::setStyle(u"fusion"_s); // not the default on Windows
        OutlinedStyle::Install();
    }

    ~ProgramStyle()
    {
        QApplication::setStyle(m_before);
    }

  private:
    QString m_before;
};

} // namespace

TEST(DesktopColours, EveryDesktop_ReachMinimumContrast)
{
    for (const auto &[name, window, text] : Desktops) {
        for (const QColor &highlight : {QColor(Qt::yellow), QColor(48, 140, 198), QColor(0, 0, 128), window}) {
            QPalette palette = PaletteOf(window, text);
            palette.setColor(QPalette::Highlight, highlight);
            palette.setColor(QPalette::HighlightedText, text);
            const DesktopColours colours = ColoursOn(palette);
            EXPECT_GE(Contrast(colours.accent, window), ShapeContrast) << name;
            EXPECT_GE(Contrast(colours.onAccent, colours.accent), TextContrast) << name;
            EXPECT_GE(Contrast(colours.onTint, colours.tint), TextContrast) << name;
            EXPECT_GE(Contrast(Dimmed(colours.onTint, colours.tint), colours.tint), TextContrast) << name;
            EXPECT_GE(Contrast(colours.warning, window), ShapeContrast) << name;
        }
    }
}

TEST(OutlinedStyle, LargerFont_FieldShowsItsWidestTextWithSpaceBesideIt)
{
    const ProgramStyle programStyle;
    const QString text = u"2026/11/25"_s;
    for (const int points : {9, 20, 40}) {
        QLineEdit field(text);
        QFont font = field.font();
        font.setPointSize(points);
        field.setFont(font);
        FitToText(&field, text);
        field.resize(field.sizeHint());
        field.end(false);
        const int characterPx = field.fontMetrics().horizontalAdvance(u'あ');
        const int left = field.inputMethodQuery(Qt::ImCursorRectangle).toRect().center().x() -
                         field.fontMetrics().horizontalAdvance(text);
        EXPECT_GE(left, characterPx / 3) << points;
        EXPECT_EQ(field.cursorPositionAt(QPoint(left, field.height() / 2)), 0) << "nothing is scrolled out";
    }
}

TEST(OutlinedStyle, EveryDesktop_EmptyControlsAreVisible)
{
    const ProgramStyle programStyle;
    QCheckBox check;
    QRadioButton radio;
    QLineEdit edit;
    QPushButton button;
    QListWidget list;
    QProgressBar progress;
    QComboBox combo;
    for (const auto &[name, window, text] : Desktops) {
        for (QWidget *const control :
             std::initializer_list<QWidget *>{&check, &radio, &edit, &button, &list, &progress, &combo}) {
            control->setPalette(PaletteOf(window, text));
            EXPECT_TRUE(HasVisiblePixel(control->grab().toImage(), window))
                << control->metaObject()->className() << " on " << name;
        }
    }
}

TEST(OutlinedStyle, EveryDesktop_DefaultIsFilledAndFocusIsARing)
{
    const ProgramStyle programStyle;
    for (const auto &[name, background, text] : Desktops) {
        QDialog window;
        window.setPalette(PaletteOf(background, text));
        QPushButton other(u"■"_s, &window);
        QPushButton filled(u"■"_s, &window);
        QLineEdit field(&window);
        for (QPushButton *const button : {&other, &filled})
            button->setAutoDefault(false);
        filled.setDefault(true);
        other.setGeometry(20, 20, 80, 30);
        filled.setGeometry(120, 20, 80, 30);
        field.setGeometry(220, 20, 80, 30);
        window.resize(320, 70);
        window.show();
        window.activateWindow();
        ASSERT_TRUE(WaitFor([&window] { return window.isActiveWindow(); }));
        const auto hasFace = [&window, back = background](const QWidget &control) {
            const QPoint inside = control.geometry().topLeft() + QPoint(8, 15);
            return Contrast(window.grab().toImage().pixelColor(inside), back) >= ShapeContrast;
        };
        const auto hasRing = [&window, back = background](const QWidget &control) {
            const QImage image = window.grab().toImage();
            const auto isVisible = [&](int distance) {
                return Contrast(image.pixelColor(control.x() - distance, control.geometry().center().y()), back) >=
                       ShapeContrast;
            };
            EXPECT_FALSE(isVisible(1) || isVisible(4));
            EXPECT_EQ(isVisible(2), isVisible(3));
            return isVisible(2);
        };
        for (QWidget *const focused : std::initializer_list<QWidget *>{&other, &filled, &field}) {
            focused->setFocus();
            EXPECT_TRUE(hasFace(filled)) << name;
            EXPECT_FALSE(hasFace(other)) << name;
            for (const QWidget *const control : std::initializer_list<const QWidget *>{&other, &filled, &field})
                EXPECT_EQ(hasRing(*control), control == focused) << name;
        }
        const QImage image = filled.grab().toImage();
        EXPECT_GE(Contrast(image.pixelColor(filled.rect().center()), image.pixelColor(8, 15)), TextContrast) << name;
        other.setEnabled(false);
        EXPECT_NE(other.grab().toImage().pixelColor(other.rect().center()), background) << "greyed, not gone, " << name;
    }
}

TEST(OutlinedStyle, FocusInScrolledWindow_IsInViewWithItsRing)
{
    const ProgramStyle style;
    QDialog window;
    auto *const content = new QWidget(&window);
    auto *const column = new QVBoxLayout(content);
    for (int number = 0; number < 100; ++number)
        column->addWidget(new QLineEdit(content));
    FitToScreen(&window, content);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    auto *const last = qobject_cast<QLineEdit *>(column->itemAt(99)->widget());
    last->setFocus(); // as by its Alt key
    QCoreApplication::processEvents();
    EXPECT_EQ(last->visibleRegion().boundingRect(), last->rect());
    const auto *const ring = window.findChild<QFocusFrame *>();
    ASSERT_TRUE(ring && ring->isVisible());
    const auto middle = [&window](const QWidget *widget) { return widget->mapTo(&window, widget->rect().center()); };
    EXPECT_LT((middle(ring) - middle(last)).manhattanLength(), 3);
    window.findChild<QScrollArea *>(u"scroll"_s)->verticalScrollBar()->setValue(0);
    EXPECT_LT((middle(ring) - middle(last)).manhattanLength(), 3) << "follows what is scrolled";
}

TEST(OutlinedStyle, LargerFont_CheckAndRadioBoxesGrowWithIt)
{
    const ProgramStyle programStyle;
    for (const int points : {9, 20, 40}) {
        QCheckBox check(u"あ"_s);
        QRadioButton radio(u"あ"_s);
        for (QAbstractButton *const button : std::initializer_list<QAbstractButton *>{&check, &radio}) {
            QFont font = button->font();
            font.setPointSize(points);
            button->setFont(font);
            button->resize(button->sizeHint());
            QStyleOptionButton option;
            option.initFrom(button);
            const QStyle *const style = button->style();
            const bool isCheck = button == &check;
            const QRect box = style->subElementRect(
                isCheck ? QStyle::SE_CheckBoxIndicator : QStyle::SE_RadioButtonIndicator, &option, button);
            const QRect text = style->subElementRect(
                isCheck ? QStyle::SE_CheckBoxContents : QStyle::SE_RadioButtonContents, &option, button);
            const int characterPx = button->fontMetrics().horizontalAdvance(u'あ');
            EXPECT_TRUE(button->rect().contains(box)) << points;
            EXPECT_GE(box.height(), characterPx) << points;
            EXPECT_LE(box.height(), characterPx * 5 / 4) << points;
            EXPECT_GT(text.left(), box.right() + characterPx / 3) << points;
            EXPECT_GE(text.width(), characterPx) << points;
        }
    }
}

TEST(OutlinedStyle, LargerFont_IconsAndArrowsGrowWithItAndLeaveRoomForText)
{
    const ProgramStyle programStyle;
    const QString text = u"デスクトップに合わせる"_s;
    for (const int points : {9, 20, 40}) {
        QComboBox combo;
        QPushButton button(ButtonIcon(Icon::Edit), text);
        QFont font = combo.font();
        font.setPointSize(points);
        combo.addItem(text);
        for (QWidget *const control : std::initializer_list<QWidget *>{&combo, &button}) {
            control->setFont(font);
            control->resize(control->sizeHint());
        }
        const int characterPx = combo.fontMetrics().horizontalAdvance(u'あ');
        QStyleOptionComboBox option;
        option.initFrom(&combo);
        const auto place = [&](QStyle::SubControl part) {
            return combo.style()->subControlRect(QStyle::CC_ComboBox, &option, part, &combo);
        };
        EXPECT_GE(place(QStyle::SC_ComboBoxEditField).width(), combo.fontMetrics().horizontalAdvance(text)) << points;
        EXPECT_GT(place(QStyle::SC_ComboBoxArrow).left(), place(QStyle::SC_ComboBoxEditField).right()) << points;
        EXPECT_GE(place(QStyle::SC_ComboBoxArrow).width(), characterPx) << points;
        EXPECT_GE(button.iconSize().width(), characterPx) << points;
        EXPECT_GE(button.width(),
                  button.iconSize().width() + characterPx / 3 + button.fontMetrics().horizontalAdvance(text))
            << points;
        // The icon is at the left of the text, with the same space beside both.
        const QImage image = button.grab().toImage();
        const auto isInk = [&image](int x) {
            for (int y = image.height() / 4; y < image.height() * 3 / 4; ++y)
                if (Contrast(image.pixelColor(x, y), image.pixelColor(8, image.height() / 2)) >= ShapeContrast)
                    return true;
            return false;
        };
        int left = 8;
        while (left < image.width() / 2 && !isInk(left))
            ++left;
        int right = image.width() - 9;
        while (right > image.width() / 2 && !isInk(right))
            --right;
        EXPECT_NEAR(left, image.width() - 1 - right, characterPx / 3.0) << points;
        EXPECT_LT(left, image.width() / 2) << points;
    }
}
