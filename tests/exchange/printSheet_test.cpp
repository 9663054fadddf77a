// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/frmPrint.h"
#include "exchange/modPrintSheet.h"
#include "records/modMarkList.h"
#include "settings/modSettings.h"
#include "support/Pieces.h"
#include "support/Rows.h"
#include "support/StudyText.h"
#include "support/WindowTest.h"
#include "text/modCheckText.h"
#include "widgets/frmWait.h"

#include <QCheckBox>
#include <QProgressBar>
#include <QRegularExpression>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The sheet of lines beside a picture 図.png.
QString Sheet(const QStringList &lines, bool withAnswers = false)
{
    const TestFolder folder;
    folder.Write(u"t/図.png"_s, "");
    PrintSheet sheet;
    const QString path = folder.WriteStudyFile(u"t/t&t.txt"_s, lines);
    EXPECT_EQ(sheet.Read(path, folder.Path(u"a.html"_s), withAnswers).message, QString());
    return QString::fromUtf8(AllPieces(sheet));
}

/// HTML of a line on the sheet.
QString LineOnSheet(const QString &line)
{
    return Sheet({line}).section(u"<div class=\"line\">"_s, 1).section(u"</div>\n</body>"_s, 0, 0);
}

/// HTML of a blank. @param em  its width
QString Underline(const QString &number, const QString &em)
{
    return u"<span class=\"blank\">"_s + number + u"<span style=\"width:"_s + em + u"em\"></span></span>"_s;
}

} // namespace

TEST(BlankNumber, UpToFifty_IsCircled)
{
    const Rows<int, QString> rows = {{1, u"①"_s},   {20, u"⑳"_s},  {21, u"㉑"_s},   {35, u"㉟"_s},
                                     {36, u"㊱"_s}, {50, u"㊿"_s}, {51, u"(51)"_s}, {5000, u"(5000)"_s}};
    for (const auto &[blank, number] : rows)
        EXPECT_EQ(BlankNumber(blank), number);
}

TEST(PrintSheet, EachKindOfLine_KeepsTextAndHidesAnswers)
{
    const QString image = u"<img src=\"t/%E5%9B%B3.png\" alt=\"図\">"_s;
    const QString picture = u"<div class=\"pictures\">"_s + image + u"</div>"_s;
    const Rows<const char *, QString, QString> rows = {
        {"markup is text", u"<b>\"&"_s, u"&lt;b&gt;&quot;&amp;"_s},
        {"half-width", u"a [bcd]  e"_s, u"a "_s + Underline(u"①"_s, u"1.5"_s) + u"  e"_s},
        {"full-width and beside each other", u"[水x][]"_s, Underline(u"①"_s, u"1.5"_s) + Underline(u"②"_s, u"2"_s)},
        {"empty", QString(), QString()},
        {"picture at the end", u"見よ ｢図｣　"_s, u"見よ "_s + picture},
        {"pictures at the end", u"見よ｢図｣ ｢図｣"_s,
         u"見よ<div class=\"pictures\">"_s + image.repeated(2) + u"</div>"_s},
        {"picture in a sentence", u"｢図｣を見よ ここ"_s, u"｢図｣を見よ ここ"_s + picture},
        {"picture before a reference without one", u"｢図｣｢絵｣"_s, u"｢図｣｢絵｣"_s + picture},
        {"picture before a blank", u"｢図｣[ ]"_s, u"｢図｣"_s + Underline(u"①"_s, u"0.5"_s) + picture},
        {"picture before an empty blank", u"｢図｣[]"_s, u"｢図｣"_s + Underline(u"①"_s, u"2"_s) + picture},
        {"picture alone", u"　｢図｣ "_s, picture},
        {"picture beside a blank", u"[ア]｢図｣"_s, Underline(u"①"_s, u"1"_s) + picture},
        {"no such picture", u"｢絵｣"_s, u"｢絵｣"_s},
        {"an answer that names a picture", u"[｢図｣]"_s, Underline(u"①"_s, u"2"_s)},
        {"a blank in a name", u"｢図[ ]｣"_s, u"｢図"_s + Underline(u"①"_s, u"0.5"_s) + u'｣'},
    };
    for (const auto &[name, line, html] : rows)
        EXPECT_EQ(LineOnSheet(line), html) << name;
}

TEST(PrintSheet, AnswersWanted_AreAppendedOnlyIfThereAreBlanks)
{
    const QString withAnswers = Sheet({u"[<x>] [水]"_s}, true);
    EXPECT_TRUE(withAnswers.contains(u"<title>t&amp;t</title>"_s));
    EXPECT_TRUE(withAnswers.contains(u"<div><b>①</b>&lt;x&gt;</div>\n<div><b>②</b>水</div>"_s));
    EXPECT_FALSE(Sheet({u"[secret]"_s}).contains(u"secret"_s));
    EXPECT_EQ(Sheet({u"a"_s}, true), Sheet({u"a"_s}, false));
    EXPECT_FALSE(withAnswers.contains(u"<script"_s) || withAnswers.contains(u"http"_s));
}

TEST(PrintSheet, PicturesBesideFile_AreLinkedAndFaultKeepsOldSheet)
{
    const TestFolder folder;
    folder.Write(u"txt/#中%/図-1.PNG"_s, "");
    const QString source = folder.WriteStudyFile(u"txt/#中%/a.b.txt"_s, {u"\t｢図-1｣[a]"_s});
    folder.MakeFolder(u"rec"_s);
    const QString sheet = PrintSheetPath(folder.Path(u"rec"_s), source);
    EXPECT_EQ(WriteSheet(source, sheet, true), QString());
    const QByteArray html = folder.Read(u"rec/a.b_印刷.html"_s);
    EXPECT_TRUE(html.contains("<h1>a.b</h1>")) << "names that differ after a dot give different sheets";
    EXPECT_TRUE(html.contains("<img src=\"../txt/%23%E4%B8%AD%25/%E5%9B%B3-1.PNG\"")) << html.toStdString();

    folder.Write(u"txt/図.png"_s, "");
    const QString note = folder.WriteStudyFile(u"rec/苦手帳.txt"_s, {u"[a]｢図｣"_s});
    EXPECT_EQ(WriteSheet(note, PrintSheetPath(folder.Path(u"rec"_s), note), true), QString());
    EXPECT_TRUE(folder.Read(u"rec/苦手帳_印刷.html"_s).contains("<img src=\"../txt/%E5%9B%B3.png\""));

    EXPECT_EQ(WriteSheet(folder.Write(u"a.txt"_s, "[a"), sheet, true), BracketCountMessage(1, u"[a"));
    EXPECT_EQ(folder.Read(u"rec/a.b_印刷.html"_s), html);
    EXPECT_EQ(WriteSheet(source, folder.Path(u"rec"_s), true), u"通常のファイルではありません。"_s);
}

using PrintWindowTest = WindowTest;

TEST_F(PrintWindowTest, Confirmed_OpensSheetAndStoresAnswerChoice)
{
    const QString source = folder.WriteStudyFile(u"txt/a.txt"_s, {u"[secret]"_s});
    const SettingsFile settings(folder.Path(u"a.ini"_s));
    folder.MakeFolder(u"rec"_s);
    const MarkList marks(folder.Path(u"ListMark.txt"_s), u"花子"_s);
    frmPrint window(services, msg, settings, marks, folder.Path(u"rec"_s), nullptr);
    const auto print = [&](bool uncheck, const QString &button) {
        script.When(u"frmPrint"_s, [=](QWidget *dialog) {
            if (uncheck)
                QTest::keyClick(dialog->focusWidget(), Qt::Key_Space);
            dialog->findChild<QAbstractButton *>(button)->click();
        });
        window.Run(source);
    };
    print(true, u"cmdCancel"_s);
    EXPECT_TRUE(settings.ReadPrintAnswers() && services.opened.isEmpty()) << "nothing was printed";
    print(false, u"cmdOK"_s);
    EXPECT_TRUE(folder.Read(u"rec/a_印刷.html"_s).contains("secret"));
    EXPECT_FALSE(settings.Exists()) << "nothing was changed";
    services.startsPrograms = false;
    print(true, u"cmdOK"_s);
    EXPECT_FALSE(folder.Read(u"rec/a_印刷.html"_s).contains("secret"));
    EXPECT_FALSE(settings.ReadPrintAnswers());
    const QString sheet = PrintSheetPath(folder.Path(u"rec"_s), source);
    EXPECT_EQ(services.opened, QStringList({sheet, sheet}));
    EXPECT_EQ(services.openedIn, QStringList(2, folder.Path(u"rec"_s)));
    EXPECT_EQ(services.messages, QStringList(SheetNotOpenedMessage(sheet)));
}

// Quadratic work would take minutes here: as many names as lines, none of them in a folder of many files.
TEST(PrintSheet, ManyNamesOfMissingPictures_AreLookedUpInLinearTime)
{
    const TestFolder folder;
    for (int file = 0; file < 1000; ++file)
        folder.Write(u"txt/%1.png"_s.arg(file), "");
    QStringList lines;
    for (int line = 0; line < 50'000; ++line)
        lines += u"｢a%1｣"_s.arg(line);
    lines += u"｢7｣"_s;
    EXPECT_EQ(WriteSheet(folder.WriteStudyFile(u"txt/a.txt"_s, lines), folder.Path(u"a.html"_s), false), QString());
    EXPECT_EQ(folder.Read(u"a.html"_s).count("<img "), 1);
}

TEST_F(PrintWindowTest, FileRefusedOrWithoutHardBlanks_ShowsReasonAndStaysOpen)
{
    const SettingsFile settings(folder.Path(u"a.ini"_s));
    const MarkList marks(folder.Path(u"rec/ListMark.txt"_s), u"花子"_s);
    folder.MakeFolder(u"rec"_s);
    ASSERT_FALSE(marks.Write(u"a"_s, DisplayText(LinesOf({u"[a]"_s})), {1}));
    frmPrint window(services, msg, settings, marks, folder.Path(), nullptr);
    script.Click(u"frmPrint"_s, u"cmdOK"_s);
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    script.When(u"frmPrint"_s, [this](QWidget *dialog) {
        folder.Write(u"a.txt"_s, "[b]");
        DialogScript::Press(dialog, u"chkOnlyHard"_s);
        DialogScript::Press(dialog, u"cmdOK"_s);
    });
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    script.When(u"frmPrint"_s, [](QWidget *dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    window.Run(folder.Write(u"a.txt"_s, "]a["));
    EXPECT_TRUE(script.IsDone());
    EXPECT_EQ(
        script.messages,
        QStringList({BracketOrderMessage(1, u"]a["), NoHardBlankMessage(u"a"_s)}).replaceInStrings(u"\r\n"_s, u"\n"_s));
    EXPECT_EQ(QDir(folder.Path()).entryList(QDir::Files), QStringList(u"a.txt"_s));
}

TEST_F(PrintWindowTest, ManyBlanks_AreWrittenOnlyAfterConsentAndCanBeStopped)
{
    const auto source = [this](int blanks) {
        return folder.Write(u"txt/a.txt"_s, QByteArray("[]\r\n").repeated(blanks));
    };
    const SettingsFile settings(folder.Path(u"a.ini"_s));
    const MarkList marks(folder.Path(u"ListMark.txt"_s), u"花子"_s);
    folder.Write(u"rec/a_印刷.html"_s, "old");
    frmPrint window(services, msg, settings, marks, folder.Path(u"rec"_s), nullptr);
    script.Click(u"frmPrint"_s, u"cmdOK"_s);
    script.Click(u"frmMsg"_s, u"cmdCancel"_s);
    script.Click(u"frmPrint"_s, u"cmdOK"_s);
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    script.Click(u"frmWait"_s, u"cmdCancel"_s);
    script.When(u"frmPrint"_s, [this](QWidget *dialog) {
        EXPECT_EQ(QDir(folder.Path(u"rec"_s)).entryList(QDir::Files).size(), 1);
        EXPECT_EQ(folder.Read(u"rec/a_印刷.html"_s), "old");
        dialog->close();
    });
    window.Run(source(400'000));
    EXPECT_TRUE(script.messages.value(0).startsWith(u"空欄が400000個あり，印刷ページは約14763ページになります。"_s));
    EXPECT_EQ(script.messages.size(), 2);

    script.Click(u"frmPrint"_s, u"cmdOK"_s);
    window.Run(source(1));
    EXPECT_EQ(script.messages.size(), 2) << "few blanks need no question";
    EXPECT_TRUE(folder.Read(u"rec/a_印刷.html"_s).endsWith("</html>\n"));
    EXPECT_TRUE(script.IsDone());
}

TEST_F(PrintWindowTest, LongWork_GoesOnInSlicesUntilItIsDone)
{
    int slices = 0;
    frmWait wait(u"caption"_s, nullptr);
    EXPECT_TRUE(
        wait.Run([&slices](const QDeadlineTimer &) { return ++slices < 5; }, [&slices] { return slices / 5.0; }));
    EXPECT_EQ(slices, 5);
    EXPECT_EQ(wait.findChild<QProgressBar *>(u"prgDone"_s)->value(), 100);
    EXPECT_FALSE(wait.isVisible());
    EXPECT_TRUE(wait.Run([](const QDeadlineTimer &) { return false; }, [] { return 1; })) << "done at once";
}
