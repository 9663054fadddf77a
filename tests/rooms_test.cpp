// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Which source folder may include which: dependencies between the rooms run one way only. And which files may do what
// the others must leave to them.
#include <QDir>
#include <QDirIterator>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

// The rooms from top to bottom. Each may include those below it, and nothing else of ours.
const QStringList Rooms = {u"app"_s,     u"view"_s,     u"page"_s,     u"study"_s,  u"files"_s,    u"write"_s,
                           u"history"_s, u"exchange"_s, u"records"_s,  u"search"_s, u"settings"_s, u"text"_s,
                           u"store"_s,   u"widgets"_s,  u"platform"_s, u"base"_s};

} // namespace

TEST(Rooms, EveryInclude_LeadsDownwardsAndOnlyPlatformKnowsTheSystem)
{
    const QDir source(QStringLiteral(SOURCE_FOLDER));
    const QRegularExpression include(u"^#include \"([^\"/]+)/"_s, QRegularExpression::MultilineOption);
    // These two ask whether a path may be written; the third is the generator of the code page's table.
    const QStringList writers = {u"base/modLog.cpp"_s, u"platform/modReplaceFile.cpp"_s, u"base/MakeCodePage932.cpp"_s};
    const QRegularExpression writing(
        u"IODevice::(WriteOnly|ReadWrite|Append)|QFile::copy|QTemporaryFile|fopen|fstream"_s);
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
        EXPECT_TRUE(writers.contains(path) || !writing.match(text).hasMatch())
            << path.toStdString() << " writes a file by itself";
        EXPECT_TRUE(room == u"platform" || !systemTest.match(text).hasMatch())
            << path.toStdString() << " depends on the operating system";
    }
    EXPECT_GT(includes, 100) << "the sources were not found";
}
