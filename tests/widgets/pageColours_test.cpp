// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "support/Rows.h"
#include "widgets/Contrast.h"
#include "widgets/OutlinedStyle.h"
#include "widgets/PageColours.h"

#include <QApplication>
#include <QCheckBox>
#include <QImage>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScopeGuard>
#include <QStyle>

#include <gtest/gtest.h>

TEST(PageColours, EveryChoice_ReachesMinimumContrast)
{
    EXPECT_NEAR(Contrast(Qt::black, Qt::white), 21, 0.001);
    EXPECT_NEAR(Contrast(Qt::white, QColor(0x77, 0x77, 0x77)), 4.478, 0.001) << "a grey just below the minimum";
    for (const PageColours *const colours : {&LightPage, &DarkPage, &SoftPage, &SoftDarkPage}) {
        const PageColours &page = *colours;
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
            {"edge with the focus", page.focus, page.background, ShapeContrast},
            {"ring around the current target", page.current, page.background, ShapeContrast},
            {"corner of a hard blank", page.hard, page.background, ShapeContrast},
            {"bar", page.barText, page.bar, TextContrast},
            {"pressed in a bar", page.barText, page.tint, TextContrast},
            {"secondary text in a bar", page.dim, page.bar, TextContrast},
            {"secondary text in a chosen row", page.dim, page.tint, TextContrast},
            {"edge of what is pressed", page.accent, page.bar, ShapeContrast},
            {"chosen", page.onAccent, page.accent, TextContrast},
            {"ticked command about hard blanks", page.hardText, page.hardTint, TextContrast},
            {"edge of that", page.hardText, page.bar, ShapeContrast},
            {"corner of its icon", page.hard, page.bar, ShapeContrast},
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
                                     {"edge of the numbers", page.stripEdge, page.background, ShapeContrast},
                                     {"mark of a hit", page.found, page.background, ShapeContrast},
                                     {"edge of the page", page.frame, page.background, ShapeContrast}});
        for (const auto &[name, colour, background, minimum] : rows)
            EXPECT_GE(Contrast(colour, background), minimum) << name << ' ' << page.background.name().toStdString();
    }
}

namespace {

const Rows<const char *, QColor, QColor> Desktops = {
    {"light", Qt::white, Qt::black},
    {"grey", QColor(239, 239, 239), Qt::black},
    {"dark", QColor(27, 30, 32), Qt::white},
    {"high contrast, black", Qt::black, Qt::white},
    {"high contrast, yellow", Qt::black, Qt::yellow},
};

bool HasVisiblePixel(const QImage &image, const QColor &background)
{
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (Contrast(image.pixelColor(x, y), background) >= ShapeContrast)
                return true;
    return false;
}

} // namespace

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

TEST(OutlinedStyle, EveryDesktop_EmptyControlsAreVisible)
{
    const QString before = QApplication::style()->name();
    const auto restore = qScopeGuard([&before] { QApplication::setStyle(before); });
    QApplication::setStyle(QStringLiteral("fusion")); // not the default on Windows
    OutlinedStyle::Install();
    QCheckBox check;
    QRadioButton radio;
    QLineEdit edit;
    QPushButton button;
    QListWidget list;
    QProgressBar progress;
    for (const auto &[name, window, text] : Desktops) {
        for (QWidget *const control :
             std::initializer_list<QWidget *>{&check, &radio, &edit, &button, &list, &progress}) {
            control->setPalette(QPalette(text, window, window, window, window, text, text, window, window));
            EXPECT_TRUE(HasVisiblePixel(control->grab().toImage(), window))
                << control->metaObject()->className() << " on " << name;
        }
    }
}
