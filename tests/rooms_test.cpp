// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Which source folder may include which: dependencies between the rooms run one way only.
#include <QDir>
#include <QDirIterator>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

// The rooms from top to bottom. Each may include those below it, and nothing else of ours.
const QStringList Rooms = {u"app"_s,     u"view"_s,     u"page"_s,    u"study"_s,    u"files"_s,
                           u"history"_s, u"exchange"_s, u"records"_s, u"search"_s,   u"settings"_s,
                           u"text"_s,    u"store"_s,    u"widgets"_s, u"platform"_s, u"base"_s};

} // namespace

TEST(Rooms, EveryInclude_LeadsDownwardsAndOnlyPlatformKnowsTheSystem)
{
    const QDir source(QStringLiteral(SOURCE_FOLDER));
    const QRegularExpression include(u"^#include \"([^\"/]+)/"_s, QRegularExpression::MultilineOption);
    const QRegularExpression systemTest(u"Q_OS_|_WIN32|__linux__|WIN32"_s);
    int includes = 0;
    QDirIterator files(source.path(), {u"*.cpp"_s, u"*.h"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(file.readAll());
        const QString path = source.relativeFilePath(file.fileName());
        const QString room = path.section(u'/', 0, 0);
        ASSERT_TRUE(Rooms.contains(room)) << room.toStdString() << " is not in the list of rooms";
        for (const QRegularExpressionMatch &match : include.globalMatch(text)) {
            ++includes;
            EXPECT_GE(Rooms.indexOf(match.captured(1)), Rooms.indexOf(room))
                << path.toStdString() << " includes " << match.captured(1).toStdString();
        }
        EXPECT_TRUE(room == u"platform" || !systemTest.match(text).hasMatch())
            << path.toStdString() << " depends on the operating system";
    }
    EXPECT_GT(includes, 100) << "the sources were not found";
}
