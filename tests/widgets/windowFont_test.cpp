// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modFonts.h"
#include "widgets/WindowFont.h"

#include <QFontDatabase>
#include <QStringList>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

bool HasJapanese(const QString &family)
{
    return QFontDatabase::writingSystems(family).contains(QFontDatabase::Japanese);
}

QStringList FamiliesOn(const QString &desktop)
{
    return WindowFont(QFont(desktop)).families();
}

/// A family that no test machine has: nothing is known of its characters.
const QString Unknown = u"Kotoban Unknown"_s;

} // namespace

TEST(WindowFont, DesktopFamilyWithoutJapanese_IsFollowedByOneThatHasIt)
{
    const QStringList families = FamiliesOn(Unknown);
    ASSERT_EQ(families.size(), 2) << "none of the preferred fonts is installed";
    EXPECT_EQ(families.first(), Unknown);
    EXPECT_TRUE(HasJapanese(families.last()));
    EXPECT_EQ(WindowFont(QFont(Unknown, 20)).pointSize(), 20);
}

TEST(WindowFont, FamilyThatIsEnough_StandsAlone)
{
    const QStringList japanese = QFontDatabase::families(QFontDatabase::Japanese);
    ASSERT_FALSE(japanese.isEmpty());
    EXPECT_EQ(FamiliesOn(japanese.last()), QStringList{japanese.last()});
    for (const QString &family : {u"Sans Serif"_s, u"Sans"_s}) {
        if (IsNamedByDesktop(family))
            continue;
        const QStringList families = FamiliesOn(family);
        ASSERT_EQ(families.size(), 1) << family.toStdString();
        EXPECT_TRUE(HasJapanese(families.first())) << family.toStdString();
    }
}
