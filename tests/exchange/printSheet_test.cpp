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
#include <QComboBox>
#include <QDeadlineTimer>
#include <QProgressBar>
#include <QRegularExpression>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

const QByteArray PictureBytes = "\x89PNG\r\n\x1A\n"; // as it begins

const SheetChoices AsInText{.print = {.withAnswers = false, .blankWidth = BlankWidth::AsInText}};

/// The sheet of lines beside a picture 図.png.
QString Sheet(const QStringList &lines, const SheetChoices &choices)
{
    const TestFolder folder;
    folder.Write(u"t/図.png"_s, PictureBytes);
    PrintSheet sheet;
    const QString path = folder.WriteStudyFile(u"t/t&t.txt"_s, lines);
    EXPECT_EQ(sheet.Read(path, folder.Path(u"a.html"_s), choices).message, QString());
    return QString::fromUtf8(AllPieces(sheet));
}

/// HTML of a line on the sheet.
QString LineOnSheet(const QString &line, const SheetChoices &choices = AsInText)
{
    return Sheet({line}, choices).section(u"<div class=\"line\">"_s, 1).section(u"</div>\n</div>\n</body>"_s, 0, 0);
}

/// HTML of a blank. @param px  its width
QString Underline(const QString &number, const QString &px)
{
    return u"<span class=\"blank\">"_s + number + u"<span class=\"rule\" style=\"width:"_s + px +
           u"px\"></span></span>"_s;
}

} // namespace

TEST(BlankNumber, SheetOfMoreThanFifty_HasOneStyle)
{
    const Rows<int, QString> rows = {{1, u"①"_s},   {20, u"⑳"_s},  {21, u"㉑"_s},
                                     {35, u"㉟"_s}, {36, u"㊱"_s}, {50, u"㊿"_s}};
    for (const auto &[blank, number] : rows) {
        EXPECT_EQ(BlankNumber(blank, 50), number);
        EXPECT_EQ(BlankNumber(blank, 51), u'(' + QString::number(blank) + u')');
    }
}

TEST(RuleWidthMm, EachChoice_LeavesRoomForHandwriting)
{
    const auto usual = PrintSettings();
    const PrintSettings large{.points = 18};
    const PrintSettings small{.points = 10};
    const PrintSettings asInText{.blankWidth = BlankWidth::AsInText};
    const PrintSettings equal{.blankWidth = BlankWidth::Equal};
    const Rows<const char *, int, PrintSettings, double> rows = {
        {"the least", 1, usual, 15},
        {"a year", 4, usual, 18},
        {"two kanji in small print", 4, small, 18},
        {"a long word", 20, usual, 90},
        {"empty", 0, usual, 18},
        {"large print", 8, large, 8 * 6.35},
        {"as in the text", 4, asInText, 4 * 25.4 / 12},
        {"equal", 1, equal, 25},
        {"equal, long", 30, equal, 25},
    };
    for (const auto &[name, cells, print, mm] : rows)
        EXPECT_NEAR(RuleWidthMm(cells, print), mm, 0.001) << name;
}

TEST(PrintSheet, EachKindOfLine_KeepsTextAndHidesAnswers)
{
    const QString image = u"<img src=\"t/%E5%9B%B3.png\" alt=\"図\">"_s;
    const QString picture = u"<div class=\"pictures\">"_s + image + u"</div>"_s;
    const Rows<const char *, QString, QString> rows = {
        {"markup is text", u"<b>\"&"_s, u"&lt;b&gt;&quot;&amp;"_s},
        {"half-width", u"a [bcd]  e"_s, u"a "_s + Underline(u"①"_s, u"24"_s) + u"  e"_s},
        {"full-width and beside each other", u"[水x][]"_s, Underline(u"①"_s, u"24"_s) + Underline(u"②"_s, u"32"_s)},
        {"empty", QString(), QString()},
        {"picture at the end", u"見よ ｢図｣　"_s, u"見よ "_s + picture},
        {"pictures at the end", u"見よ｢図｣ ｢図｣"_s,
         u"見よ<div class=\"pictures\">"_s + image.repeated(2) + u"</div>"_s},
        {"picture in a sentence", u"｢図｣を見よ ここ"_s, u"｢図｣を見よ ここ"_s + picture},
        {"picture before a reference without one", u"｢図｣｢絵｣"_s, u"｢図｣｢絵｣"_s + picture},
        {"picture before a blank", u"｢図｣[ ]"_s, u"｢図｣"_s + Underline(u"①"_s, u"8"_s) + picture},
        {"picture before an empty blank", u"｢図｣[]"_s, u"｢図｣"_s + Underline(u"①"_s, u"32"_s) + picture},
        {"picture alone", u"　｢図｣ "_s, picture},
        {"picture beside a blank", u"[ア]｢図｣"_s, Underline(u"①"_s, u"16"_s) + picture},
        {"no such picture", u"｢絵｣"_s, u"｢絵｣"_s},
        {"an answer that names a picture", u"[｢図｣]"_s, Underline(u"①"_s, u"32"_s)},
        {"a blank in a name", u"｢図[ ]｣"_s, u"｢図"_s + Underline(u"①"_s, u"8"_s) + u'｣'},
    };
    for (const auto &[name, line, html] : rows)
        EXPECT_EQ(LineOnSheet(line), html) << name;
}

TEST(PrintSheet, AnswersWanted_AreAppendedOnlyIfThereAreBlanks)
{
    const QString withAnswers = Sheet({u"[<x>] [水]"_s}, {});
    EXPECT_TRUE(withAnswers.contains(u"<title>t&amp;t</title>"_s));
    EXPECT_TRUE(withAnswers.contains(u"<div><b>①</b>&lt;x&gt;</div>\n<div><b>②</b>水</div>"_s));
    EXPECT_FALSE(Sheet({u"[secret]"_s}, AsInText).contains(u"secret"_s));
    EXPECT_EQ(Sheet({u"a"_s}, {}), Sheet({u"a"_s}, {.print = {.withAnswers = false}}));
    EXPECT_FALSE(withAnswers.contains(u"<script"_s) || withAnswers.contains(u"http"_s));
}

TEST(PrintSheet, Settings_AreInTheStyle)
{
    const auto style = [](const PrintSettings &print) {
        return Sheet({u"a"_s}, {.print = print}).section(u"<style>"_s, 1).section(u"</style>"_s, 0, 0);
    };
    const QString usual = style({});
    EXPECT_TRUE(usual.contains(u"font-size: 12pt; line-height: calc(1em + 5mm);"_s));
    EXPECT_FALSE(usual.contains(u".lines {"_s));
    EXPECT_FALSE(usual.section(u".line {"_s, 1).section(u'}', 0, 0).contains(u"indent"_s)) << "no list";
    const QString other = style({.lineGapMm = 9, .columns = 2, .points = 16});
    EXPECT_TRUE(other.contains(u"font-size: 16pt; line-height: calc(1em + 9mm);"_s));
    EXPECT_TRUE(other.contains(u".lines { columns: 2; column-gap: 8mm; }"_s));
}

TEST(PrintSheet, LongBlank_GoesOnInFurtherRulesAndTeacherReadsItsAnswer)
{
    const auto rule = [](const QString &px) -> QString {
        return u"<span class=\"rule\" style=\"width:"_s + px + u"px\"></span>"_s;
    };
    const auto told = [](const QString &px, const QString &text) -> QString {
        return u"<span class=\"rule told\" style=\"min-width:"_s + px + u"px\">"_s + text + u"</span>"_s;
    };
    const SheetChoices pupil{.print = {.withAnswers = false}};
    const SheetChoices teacher{.print = {.withAnswers = false}, .isForTeacher = true};
    const SheetChoices equal{.print = {.withAnswers = false, .blankWidth = BlankWidth::Equal}, .isForTeacher = true};
    const Rows<const char *, QString, SheetChoices, QString, QString> rows = {
        {"ten kanji", QString(10, u'水'), pupil, rule(u"171"_s), rule(u"171"_s)},
        {"markup", u"<&"_s, teacher, told(u"57"_s, u"&lt;&amp;"_s), QString()},
        {"ten kanji, told", u"一二三四五六七八九十"_s, teacher, told(u"171"_s, u"一二三四五"_s),
         told(u"171"_s, u"六七八九十"_s)},
        {"longer than its rule", QString(15, u'水'), equal, told(u"48"_s, QString(8, u'水')),
         told(u"48"_s, QString(7, u'水'))},
    };
    for (const auto &[name, answer, choices, first, more] : rows)
        EXPECT_EQ(LineOnSheet(u'[' + answer + u']', choices),
                  u"<span class=\"blank\">①"_s + first + u"</span>"_s + more)
            << name;
    const QString sheet = Sheet({u"[水]"_s}, teacher);
    EXPECT_TRUE(sheet.contains(u"<b>版 A　先生用</b>"_s));
    EXPECT_TRUE(sheet.contains(u"<title>t&amp;t　版 A　先生用</title>"_s));
}

TEST(EditionB, LinesWithBlanks_AllMoveAndOthersStay)
{
    const Rows<std::vector<bool>, std::vector<int>> rows = {
        {{}, {}},
        {{true}, {1}},
        {{true, false, true}, {3, 2, 1}},
        {{false, false}, {1, 2}},
    };
    for (const auto &[hasBlank, order] : rows)
        EXPECT_EQ(EditionB(hasBlank), order);
    const std::vector<int> many = EditionB(std::vector<bool>(1000, true));
    for (int line = 1; line <= 1000; ++line) {
        EXPECT_NE(many[size_t(line) - 1], line);
        EXPECT_EQ(std::ranges::count(many, line), 1);
    }
    EXPECT_EQ(EditionB(std::vector<bool>(5, true)), std::vector<int>({5, 4, 1, 3, 2})) << "the same on every machine";
}

TEST(PrintSheet, EditionB_NumbersItsBlanksInItsOrderAndAnswersMatch)
{
    const QStringList lines = {u"題"_s, u"[a] [b]"_s, u"中"_s, u"[c]"_s};
    const QString sheet = Sheet(lines, {.isEditionB = true});
    EXPECT_TRUE(sheet.contains(u"<b>版 B</b>"_s) && sheet.contains(u"正解（版 B）"_s));
    EXPECT_TRUE(sheet.contains(u"<div><b>①</b>c</div>\n<div><b>②</b>a</div>\n<div><b>③</b>b</div>"_s));
    const QString ofLines = sheet.section(u"<div class=\"lines\">"_s, 1).section(u"<section"_s, 0, 0);
    const QStringList wanted = {u"題"_s, u"①"_s, u"中"_s, u"②"_s, u"③"_s};
    qsizetype at = 0;
    for (const QString &text : wanted) {
        at = ofLines.indexOf(text, at);
        EXPECT_GE(at, 0) << text.toStdString();
    }
    const TestFolder folder;
    const MarkList marks(folder.Path(u"ListMark.txt"_s), u"花子"_s);
    ASSERT_FALSE(marks.Write(u"t&t"_s, DisplayText(LinesOf(lines)), {2, 3}));
    const QString hard = Sheet(lines, {.isEditionB = true, .onlyHard = &marks});
    EXPECT_TRUE(hard.contains(u"<div><b>①</b>c</div>\n<div><b>②</b>b</div>\n</div>"_s));
}

TEST(PrintSheet, MissingPictures_AreListedWithTheirLines)
{
    const TestFolder folder;
    folder.Write(u"図.png"_s, PictureBytes);
    folder.Write(u"絵.png"_s, "<html>");
    QStringList lines = {u"｢図｣ ｢絵｣"_s, u"[a] ｢絵｣"_s, u"[｢答え｣] ｢絵[b]｣"_s, u"｢a.b｣"_s};
    for (int line = 0; line < 30; ++line)
        lines += u"｢%1｣"_s.arg(line);
    PrintSheet sheet;
    const auto look = [&](const SheetChoices &choices) {
        EXPECT_FALSE(sheet.Read(folder.WriteStudyFile(u"a.txt"_s, lines), folder.Path(u"a.html"_s), choices));
        while (sheet.LookForPictures(QDeadlineTimer(0)))
            EXPECT_GT(sheet.Looked(), 0);
        return sheet.Missing();
    };
    const MissingPictures missing = look({});
    EXPECT_EQ(missing.count, 32);
    EXPECT_EQ(missing.first.first(3), QStringList({u"1行目：絵"_s, u"2行目：絵"_s, u"5行目：0"_s}));
    EXPECT_TRUE(MissingPicturesQuestion(missing).contains(u"\r\n    22行目：17\r\n    ほかに12個\r\n"_s));
    const QByteArray html = AllPieces(sheet);
    EXPECT_TRUE(html.contains("①")) << "nothing is lost by looking";
    EXPECT_EQ(html.count("<img"), 1) << "of the picture that can be shown";
    const MarkList marks(folder.Path(u"ListMark.txt"_s), u"花子"_s);
    ASSERT_FALSE(marks.Write(u"a"_s, DisplayText(LinesOf(lines)), {1}));
    EXPECT_EQ(look({.onlyHard = &marks}).first, QStringList(u"2行目：絵"_s)) << "of the lines on the sheet";
}

TEST(PrintSheet, PicturesBesideFile_AreLinkedAndFaultKeepsOldSheet)
{
    const TestFolder folder;
    folder.Write(u"txt/#中%/図-1.PNG"_s, PictureBytes);
    const QString source = folder.WriteStudyFile(u"txt/#中%/a.b.txt"_s, {u"\t｢図-1｣[a]"_s});
    folder.MakeFolder(u"rec"_s);
    const QString sheet = PrintSheetPath(folder.Path(u"rec"_s), source);
    EXPECT_EQ(WriteSheet(source, sheet, true), QString());
    const QByteArray html = folder.Read(u"rec/a.b_印刷.html"_s);
    EXPECT_TRUE(html.contains("<h1>a.b</h1>")) << "names that differ after a dot give different sheets";
    EXPECT_TRUE(html.contains("<img src=\"../txt/%23%E4%B8%AD%25/%E5%9B%B3-1.PNG\"")) << html.toStdString();

    folder.Write(u"txt/図.png"_s, PictureBytes);
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
        window.Run({source});
    };
    print(true, u"cmdCancel"_s);
    EXPECT_TRUE(settings.ReadPrint().withAnswers && services.opened.isEmpty()) << "nothing was printed";
    print(false, u"cmdOK"_s);
    EXPECT_TRUE(folder.Read(u"rec/a_印刷.html"_s).contains("secret"));
    EXPECT_FALSE(settings.Exists()) << "nothing was changed";
    services.startsPrograms = false;
    print(true, u"cmdOK"_s);
    EXPECT_FALSE(folder.Read(u"rec/a_印刷.html"_s).contains("secret"));
    EXPECT_FALSE(settings.ReadPrint().withAnswers);
    const QString sheet = PrintSheetPath(folder.Path(u"rec"_s), source);
    EXPECT_EQ(services.opened, QStringList({sheet, sheet}));
    EXPECT_EQ(services.openedIn, QStringList(2, folder.Path(u"rec"_s)));
    EXPECT_EQ(services.messages, QStringList(SheetNotOpenedMessage(sheet)));
}

TEST_F(PrintWindowTest, FormChosen_IsPrintedAndRememberedExceptTeacherAndEdition)
{
    const SettingsFile settings(folder.Path(u"a.ini"_s));
    const MarkList marks(folder.Path(u"ListMark.txt"_s), u"花子"_s);
    folder.MakeFolder(u"rec"_s);
    const QString source = folder.WriteStudyFile(u"txt/a.txt"_s, {u"[一]"_s, u"[二] ｢なし｣"_s});
    frmPrint window(services, msg, settings, marks, folder.Path(u"rec"_s), nullptr);
    const auto combo = [](QWidget *dialog, const QString &name) { return dialog->findChild<QComboBox *>(name); };
    script.When(u"frmPrint"_s, [&combo](QWidget *dialog) {
        EXPECT_EQ(combo(dialog, u"cboBlankWidth"_s)->currentText(), u"2倍"_s);
        combo(dialog, u"cboBlankWidth"_s)->setCurrentText(u"同じ幅 25 mm"_s);
        combo(dialog, u"cboLineGap"_s)->setCurrentText(u"8 mm"_s);
        combo(dialog, u"cboColumns"_s)->setCurrentText(u"2段"_s);
        combo(dialog, u"cboPointSize"_s)->setCurrentText(u"18 pt"_s);
        combo(dialog, u"cboEdition"_s)->setCurrentIndex(1);
        DialogScript::Press(dialog, u"chkTeacher"_s);
        DialogScript::Press(dialog, u"cmdOK"_s);
    });
    script.Click(u"frmMsg"_s, u"cmdCancel"_s);
    script.When(u"frmPrint"_s, [this](QWidget *dialog) {
        EXPECT_FALSE(QFile::exists(folder.Path(u"rec/a_印刷B_先生用.html"_s))) << "not without consent";
        DialogScript::Press(dialog, u"cmdOK"_s);
    });
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    window.Run({source});
    EXPECT_EQ(script.messages, QStringList(2, MissingPicturesQuestion({1, {u"2行目：なし"_s}}).remove(u'\r')));
    const QString html = QString::fromUtf8(folder.Read(u"rec/a_印刷B_先生用.html"_s));
    EXPECT_TRUE(html.contains(u"font-size: 18pt; line-height: calc(1em + 8mm)"_s) && html.contains(u"columns: 2"_s));
    EXPECT_TRUE(html.contains(u"①<span class=\"rule told\" style=\"min-width:95px\">二</span>"_s));
    const PrintSettings printed{.blankWidth = BlankWidth::Equal, .lineGapMm = 8, .columns = 2, .points = 18};
    EXPECT_EQ(settings.ReadPrint(), printed);
    script.When(u"frmPrint"_s, [&combo](QWidget *dialog) {
        EXPECT_EQ(combo(dialog, u"cboPointSize"_s)->currentText(), u"18 pt"_s);
        EXPECT_EQ(combo(dialog, u"cboEdition"_s)->currentText(), u"A"_s);
        EXPECT_FALSE(dialog->findChild<QCheckBox *>(u"chkTeacher"_s)->isChecked());
        dialog->close();
    });
    window.Run({source});
    EXPECT_TRUE(script.IsDone());
}

TEST_F(PrintWindowTest, SeveralFiles_ReportNamesMissingPicturesWithTheirLines)
{
    const SettingsFile settings(folder.Path(u"a.ini"_s));
    const MarkList marks(folder.Path(u"ListMark.txt"_s), u"花子"_s);
    folder.MakeFolder(u"rec"_s);
    const QStringList paths = {folder.WriteStudyFile(u"txt/a.txt"_s, {u"[a]"_s}),
                               folder.WriteStudyFile(u"txt/b.txt"_s, {u"[b]"_s, u"｢1｣ ｢2｣ ｢3｣ ｢4｣"_s})};
    frmPrint window(services, msg, settings, marks, folder.Path(u"rec"_s), nullptr);
    script.Click(u"frmPrint"_s, u"cmdOK"_s);
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    window.Run(paths);
    EXPECT_TRUE(script.IsDone());
    EXPECT_EQ(script.messages,
              QStringList(u"2個のファイルを印刷ページにしました。\n  a.txt\n  b.txt\n\n"
                          u"次の注意があります。\n"
                          u"  b.txt：図がないか，開けません（2行目：1，2行目：2，2行目：3，ほかに1個）"_s));
}

// Quadratic work would take minutes here: as many names as lines, none of them in a folder of many files.
TEST(PrintSheet, ManyNamesOfMissingPictures_AreLookedUpInLinearTime)
{
    const TestFolder folder;
    for (int file = 0; file < 1000; ++file)
        folder.Write(u"txt/%1.png"_s.arg(file), PictureBytes);
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
    window.Run({folder.Write(u"a.txt"_s, "]a[")});
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
    window.Run({source(400'000)});
    EXPECT_TRUE(script.messages.value(0).startsWith(u"空欄が400000個あり，印刷ページは約17620ページになります。"_s));
    EXPECT_EQ(script.messages.size(), 2);

    script.Click(u"frmPrint"_s, u"cmdOK"_s);
    window.Run({source(1)});
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
