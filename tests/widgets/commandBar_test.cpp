// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "support/Rows.h"
#include "support/WaitFor.h"
#include "widgets/BarButton.h"
#include "widgets/CommandBar.h"
#include "widgets/Contrast.h"
#include "widgets/ElidedLabel.h"
#include "widgets/Measures.h"
#include "widgets/PageColours.h"
#include "widgets/modBarFit.h"

#include <QAction>
#include <QImage>
#include <QMenu>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

TEST(PaintedIcon, EveryIcon_PaintsItsOwnShapeInsideItsSquare)
{
    constexpr int margin = 10;
    constexpr int size = 40;
    QList<QImage> shapes;
    for (int i = 0; i < IconCount; ++i) {
        QImage image(size + 2 * margin, size + 2 * margin, QImage::Format_ARGB32);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        PaintIcon(&painter, Icon(i), QRectF(margin, margin, size, size), Qt::black, Qt::red);
        painter.end();
        shapes += image.copy(margin, margin, size, size);
        EXPECT_FALSE(shapes.sliced(0, i).contains(shapes[i])) << i << " looks like another one";
        painter.begin(&image);
        painter.setCompositionMode(QPainter::CompositionMode_Clear);
        painter.fillRect(margin, margin, size, size, Qt::transparent);
        painter.end();
        QImage empty = image;
        empty.fill(Qt::transparent);
        EXPECT_EQ(image, empty) << i << " reaches out of its square";
        EXPECT_NE(shapes[i], empty.copy(margin, margin, size, size)) << i << " is empty";
    }
    EXPECT_EQ(shapes[int(Icon::Hard)].pixelColor(35, 9), QColor(Qt::red)) << "its corner";
}

TEST(BarFit, NarrowerBar_LosesControlsInTheGivenOrderAndEmptyGroupsTheirLine)
{
    // Groups: file | read, edit | search | settings, with the button of the menu in the last one.
    const std::vector<BarItem> items = {{100, false}, {50, true}, {60, false}, {40, true}, {30, true}};
    const std::vector<size_t> leaving = {4, 1, 2, 3};
    const BarRoom room{.titlePx = 80, .menuPx = 20, .linePx = 1, .gapPx = 10};
    using Shown = std::vector<bool>;
    const Rows<const char *, int, Shown, Shown> rows = {
        {"all fit exactly", 473, {true, true, true, true, true}, {false, true, false, true, true}},
        {"a pixel less", 472, {true, true, true, true, false}, {false, true, false, true, true}},
        {"one of two in a group", 432, {true, false, true, true, false}, {false, true, false, true, true}},
        {"a whole group", 372, {true, false, false, true, false}, {false, false, false, true, true}},
        {"all that may go", 291, {true, false, false, false, false}, {false, false, false, false, true}},
        {"what must stay does not fit", 10, {true, false, false, false, false}, {false, false, false, false, true}},
    };
    for (const auto &[name, width, shown, lines] : rows) {
        const BarFit fit = FitBar(items, leaving, room, width);
        EXPECT_EQ(fit.shown, shown) << name << ' ' << fit.widthPx;
        EXPECT_EQ(fit.lines, lines) << name;
    }
    EXPECT_EQ(FitBar({}, {}, room, 1000).widthPx, 110);
}

namespace {

/// A window with a bar of the kind that the study window has.
class BarWindow : public QWidget
{
  public:
    BarWindow()
    {
        bar->StartGroup();
        bar->Add(open);
        bar->StartGroup();
        speakMenu->setMenu(new QMenu(speakMenu));
        bar->Add(speak, speakMenu);
        bar->StartGroup();
        bar->Add(onlyHard);
        bar->Add(help);
        open->setShortcut(u"Alt+O"_s);
        speak->setShortcut(u"Alt+S"_s);
        onlyHard->setShortcut(u"Alt+N"_s);
        onlyHard->SetCount(0);
        help->setShortcut(u"Alt+H"_s);
        bar->SetLeavingOrder({help, onlyHard, speak});
        bar->AddToMenu(new QAction(u"大きく"_s, this));
        show();
        activateWindow();
        EXPECT_TRUE(WaitFor([this] { return isActiveWindow(); }));
    }

    void SetWidth(int width)
    {
        resize(width, 200);
        bar->setGeometry(0, 0, width, bar->sizeHint().height());
        QCoreApplication::processEvents();
    }

    /// The texts of the entries in the bar's menu.
    QStringList Menu()
    {
        QMenu *const menu = bar->MenuButton()->menu();
        Q_EMIT menu->aboutToShow();
        QStringList texts;
        for (const QAction *const action : menu->actions())
            if (action->isVisible() && !action->isSeparator())
                texts += action->text();
        return texts;
    }

    CommandBar *bar = new CommandBar(u"lblFile"_s, this);
    ElidedLabel *title = bar->Title();
    BarButton *open = new BarButton(u"cmdFile"_s, Icon::Open, u"ファイル選択"_s, this);
    BarCheckBox *speak = new BarCheckBox(u"chkSpeak"_s, Icon::Speak, u"読み上げ"_s, this);
    BarButton *speakMenu = new BarButton(u"cmdSpeak"_s, Icon::Down, QString(), this);
    BarCheckBox *onlyHard = new BarCheckBox(u"chkOnlyHard"_s, Icon::Filter, u"苦手だけ"_s, this);
    BarButton *help = new BarButton(u"cmdDispHowToUse"_s, Icon::Help, u"使い方"_s, this);
};

} // namespace

TEST(CommandBar, AnyWidth_KeepsOneRowAndEveryCommandInTheBarOrItsMenu)
{
    BarWindow window;
    const int all = window.bar->sizeHint().width();
    const int least = window.bar->minimumSizeHint().width();
    EXPECT_LT(least, all);
    for (int width = all + 5; width >= least; --width) {
        window.SetWidth(width);
        const QStringList menu = window.Menu();
        int right = window.title->width() + window.title->x();
        for (const QAbstractButton *const control :
             std::initializer_list<const QAbstractButton *>{window.open, window.speak, window.onlyHard, window.help}) {
            const bool isInMenu = menu.contains(control->text()) || menu.contains(control->text() + u"（Alt+S）");
            ASSERT_NE(control->isVisible(), isInMenu) << width;
            if (!control->isVisible())
                continue;
            ASSERT_GT(control->x(), right) << width;
            ASSERT_EQ(control->size(), control->sizeHint()) << width;
            right = control->geometry().right();
        }
        ASSERT_GT(window.bar->MenuButton()->x(), right) << width;
        ASSERT_LE(window.bar->MenuButton()->geometry().right(), width) << width;
        ASSERT_EQ(window.speakMenu->isVisible(), window.speak->isVisible()) << width;
        ASSERT_TRUE(menu.contains(u"大きく"_s)) << width;
    }
    EXPECT_TRUE(window.open->isVisible()) << "it always stays";
    EXPECT_EQ(window.Menu(), QStringList({u"読み上げ（Alt+S）"_s, u"苦手だけ"_s, u"使い方"_s, u"大きく"_s}));
    window.SetWidth(all);
    EXPECT_EQ(window.Menu(), QStringList({u"大きく"_s}));
}

TEST(CommandBar, KeyOfAHiddenControl_WorksWhileItIsEnabled)
{
    BarWindow window;
    const QSignalSpy clicks(window.onlyHard, &QAbstractButton::clicked);
    const int all = window.bar->sizeHint().width();
    // The last time, the whole bar is hidden.
    for (const int width : {all, window.bar->minimumSizeHint().width(), all, 0}) {
        window.SetWidth(width > 0 ? width : all);
        window.bar->setVisible(width > 0);
        const auto press = [&window] { QTest::keyClick(&window, Qt::Key_N, Qt::AltModifier); };
        const auto before = clicks.count();
        window.onlyHard->setEnabled(false);
        press();
        window.onlyHard->setEnabled(true);
        press();
        EXPECT_TRUE(WaitFor([&window] { return window.onlyHard->isChecked(); })) << width;
        press();
        EXPECT_TRUE(WaitFor([&window] { return !window.onlyHard->isChecked(); })) << width;
        EXPECT_EQ(clicks.count(), before + 2) << width << ", none of them while it was disabled";
    }
}

TEST(CommandBar, Alt_ShowsTheLetterInThePlaceOfTheIcon)
{
    BarWindow window;
    window.SetWidth(window.bar->sizeHint().width());
    const QImage before = window.bar->grab().toImage();
    QTest::keyPress(&window, Qt::Key_Alt);
    const QImage held = window.bar->grab().toImage();
    EXPECT_NE(held, before);
    QTest::keyRelease(&window, Qt::Key_Alt);
    EXPECT_EQ(window.bar->grab().toImage(), before);
}

TEST(BarButton, EveryState_LooksDifferentAndNothingMoves)
{
    for (const PageColours *const colours : {&LightPage, &DarkPage, &SoftPage, &SoftDarkPage}) {
        QWidget window;
        window.setPalette(BarPalette(*colours));
        QWidget elsewhere(&window);
        elsewhere.setFocusPolicy(Qt::StrongFocus);
        BarCheckBox control(u"chkOnlyHard"_s, Icon::Filter, u"苦手だけ"_s, &window);
        control.SetCount(0);
        control.setGeometry(QRect(QPoint(10, 10), control.sizeHint()));
        window.show();
        window.activateWindow();
        elsewhere.setFocus();
        ASSERT_TRUE(WaitFor([&elsewhere] { return elsewhere.hasFocus(); }));
        QList<QImage> looks;
        const auto look = [&looks, &control](const char *state) {
            const QImage image = control.grab().toImage();
            EXPECT_FALSE(looks.contains(image)) << state << " looks like another state";
            looks += image;
        };
        const QSize size = control.sizeHint();
        look("usual");
        control.SetCount(123);
        look("with a number");
        control.setChecked(true);
        look("ticked");
        control.SetTickedColours(colours->hardTint, colours->hardText);
        look("ticked, with colours of its own");
        EXPECT_GE(Contrast(looks.last().pixelColor(control.rect().center().x(), 3), colours->bar), ShapeContrast);
        control.setFocus();
        look("with the focus");
        control.setEnabled(false);
        look("disabled");
        EXPECT_EQ(control.sizeHint(), size);
        control.setEnabled(true);
        control.setChecked(false);
        QTest::mouseClick(&control, Qt::LeftButton, {}, QPoint(control.width() - 2, control.height() - 2));
        EXPECT_TRUE(control.isChecked()) << "the whole face can be clicked";
        EXPECT_EQ(control.accessibleName(), u"苦手だけ 123"_s);
    }
}

TEST(BarButton, HighContrastPalette_TicksByTheEdge)
{
    for (const QColor &tint : {QColor(Qt::white), QColor(40, 40, 40)}) {
        QPalette desktop(Qt::white, Qt::black);
        desktop.setColor(QPalette::Window, Qt::black);
        desktop.setColor(QPalette::WindowText, Qt::white);
        desktop.setColor(QPalette::AlternateBase, tint);
        desktop.setColor(QPalette::Highlight, Qt::yellow);
        QWidget window;
        window.setPalette(desktop);
        BarCheckBox control(u"chkOnlyHard"_s, Icon::Filter, u"苦手だけ"_s, &window);
        control.resize(control.sizeHint());
        const QImage before = control.grab().toImage();
        control.setChecked(true);
        const QImage ticked = control.grab().toImage();
        EXPECT_NE(ticked, before);
        const QPoint belowEdge(control.rect().center().x(), FocusRingReach + FocusRingWidth + 1);
        EXPECT_EQ(ticked.pixelColor(belowEdge), QColor(Qt::black)) << tint.name().toStdString();
    }
}
