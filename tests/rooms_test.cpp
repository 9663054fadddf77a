// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Which source folder may include which: dependencies between the rooms run one way only.
#include <QDir>
#include <QDirIterator>
#include <QMap>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

// Each room with the rooms it may include besides itself.
const QMap<QString, QString> Rooms = {
    {u"base"_s, QString()},
    {u"platform"_s, u"base"_s},
    {u"widgets"_s, u"base"_s},
    {u"settings"_s, u"base platform widgets"_s},
    {u"text"_s, u"base platform settings/modCharCode"_s},
    {u"store"_s, u"base platform"_s},
    {u"files"_s, u"base platform widgets settings text store"_s},
    {u"search"_s, u"base widgets text"_s},
    {u"view"_s, u"base platform widgets settings text store files search"_s},
    {u"app"_s, u"base platform widgets settings text store files search view"_s},
};

bool MayInclude(const QString &room, const QString &header)
{
    if (header.startsWith(room + u'/'))
        return true;
    for (const QString &allowed : Rooms.value(room).split(u' ', Qt::SkipEmptyParts))
        if (header.startsWith(allowed + u'/') || header.startsWith(allowed + u'.'))
            return true;
    return false;
}

} // namespace

TEST(Rooms, EveryInclude_IsAllowedAndLogicUsesNoWidgets)
{
    const QDir source(QStringLiteral(SOURCE_FOLDER));
    const QRegularExpression include(u"^#include ([\"<])([^\">]+)"_s, QRegularExpression::MultilineOption);
    const QRegularExpression window(
        u"^(QApplication|QWidget|QDialog|QLabel|QPainter|QFont|QMessageBox|QPushButton|QGuiApplication).*"_s);
    const QRegularExpression systemTest(u"Q_OS_|_WIN32|__linux__|WIN32"_s);
    int includes = 0;
    QDirIterator files(source.path(), {u"*.cpp"_s, u"*.h"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(file.readAll());
        const QString path = source.relativeFilePath(file.fileName());
        const QString room = path.section(u'/', 0, 0);
        const bool isLogic = room == u"base" || path.section(u'/', -1).startsWith(u"mod");
        for (const QRegularExpressionMatch &match : include.globalMatch(text)) {
            ++includes;
            const QString header = match.captured(2);
            const bool isOurs = match.captured(1) == u"\"";
            const bool isWindow = window.match(header).hasMatch() || header.section(u'/', -1).startsWith(u"frm");
            EXPECT_TRUE(!isOurs || header.endsWith(u".inc") || MayInclude(room, header))
                << path.toStdString() << " " << header.toStdString();
            EXPECT_FALSE(isLogic && isWindow) << path.toStdString() << " " << header.toStdString();
        }
        EXPECT_TRUE(room == u"platform" || !systemTest.match(text).hasMatch())
            << path.toStdString() << " depends on the operating system";
    }
    EXPECT_GT(includes, 100) << "the sources were not found";
}
