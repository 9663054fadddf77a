// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modCommandLine.h"
#include "settings/frmIni.h"
#include "settings/modEditor.h"
#include "settings/modSettings.h"
#include "settings/modSpeech.h"
#include "settings/modZoom.h"
#include "support/Rows.h"
#include "support/WindowTest.h"

#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

TEST(Settings, OutOfRangeValue_IsReplacedWithMessage)
{
    const Rows<const char *, QByteArray, QStringList> rows = {
        {"font size not offered", "FontSize=10", {OutOfRangeMessage(u"フォントサイズ："_s, u"10"_s, u"9.75"_s)}},
        {"offered font size", "Fontsize=11.25", {}},
        {"font size not a number", "FontSize=big", {OutOfRangeMessage(u"フォントサイズ："_s, u"big"_s, u"9.75"_s)}},
        {"font size with a comma", "FontSize=9,75", {OutOfRangeMessage(u"フォントサイズ："_s, u"9,75"_s, u"9.75"_s)}},
        {"spacing below the bounds", "LineSpace=3", {OutOfRangeMessage(u"行間："_s, u"3"_s, u"4"_s)}},
        {"spacing at the upper bound", "LineSpace=6", {}},
        {"spacing above the bounds", "LineSpace=7", {OutOfRangeMessage(u"行間："_s, u"7"_s, u"4"_s)}},
        {"left of the screen", "FormLeft=-5", {OutOfRangeMessage(u"フォームLeft："_s, u"-5"_s, u"0"_s)}},
        {"rightmost position that fits", "FormLeft=300", {}},
        {"right of that", "FormLeft=301", {OutOfRangeMessage(u"フォームLeft："_s, u"301"_s, u"0"_s)}},
        {"no editor", "TextEditor=", {}},
        {"notepad in capitals", "TextEditor=NOTEPAD.EXE", {}},
        {"missing editor", "TextEditor=/no/such.exe", {EditorMissingMessage(u"/no/such.exe"_s)}},
    };
    const TestFolder folder;
    for (const auto &[name, line, expected] : rows) {
        const SettingsFile file(folder.Write(u"a.ini"_s, "[setting]\r\n" + line + "\r\n"));
        QStringList messages;
        const Settings settings = file.Read(DefaultSettings(), UpperBounds(300), &messages);
        EXPECT_EQ(messages, expected) << name;
        EXPECT_TRUE(IsFontSizeOffered(settings.FontSize) && IsEditorUsable(settings.TextEditor)) << name;
    }
    EXPECT_EQ(OutOfRangeMessage(u"行間："_s, u"7"_s, u"4"_s),
              u"iniファイルの設定値が範囲外でした。\r\n    行間：7\r\nデフォルト値4に設定します。\r\n"_s);
    EXPECT_EQ(EditorMissingMessage(u"x.exe"_s), u"指定のテキストエディタが見つかりません。\r\n    テキストエディタ："
                                                u"x.exe\r\nデフォルト値notepad.exeに設定します。\r\n"_s);
}

TEST(Settings, WrittenSettings_HaveExactBytesAndRoundTrip)
{
    const TestFolder folder;
    const SettingsFile file(folder.Path(u"Kotoban.ini"_s));
    Settings settings = DefaultSettings();
    settings.FontSize = 12.75f;
    settings.LineSpace = 5;
    settings.bolDispLineNum = false;
    EXPECT_TRUE(file.WriteFileIniEx(settings));
    EXPECT_TRUE(file.WriteFileIniFormPos(120));
    EXPECT_TRUE(file.WriteFileIniFormPos(-1)) << "off the screen: the old position is kept";
    EXPECT_TRUE(file.WritePageColour(PageColourChoice::Dark));
    EXPECT_EQ(folder.Read(u"Kotoban.ini"_s), "[setting]\r\nFontsize=12.75\r\nLineSpace=5\r\nTextEditor=notepad.exe\r\n"
                                             "bolDispLineNum=False\r\nFormLeft=120\r\nPageColour=Dark\r\n");
    QStringList messages;
    const Settings read = file.Read(DefaultSettings(), UpperBounds(300), &messages);
    EXPECT_TRUE(messages.isEmpty());
    EXPECT_EQ(read.FontSize, 12.75f);
    EXPECT_EQ(read.LineSpace, 5);
    EXPECT_EQ(read.FormLeft, 120);
    EXPECT_FALSE(read.bolDispLineNum);
    EXPECT_EQ(read.pageColour, PageColourChoice::Dark);
    folder.Write(u"Kotoban.ini"_s, "[setting]\r\nbolDispLineNum=1\r\nFormLeft=-7\r\n");
    EXPECT_FALSE(file.Read(DefaultSettings(), UpperBounds(300), &messages).bolDispLineNum) << "1 is not True";
    messages.clear();
    const Rows<QByteArray, PageColourChoice> colours = {
        {"", PageColourChoice::Light},
        {"PageColour=pink\r\n", PageColourChoice::Light},
        {"PageColour=desktop\r\n", PageColourChoice::Desktop},
    };
    for (const auto &[line, choice] : colours) {
        folder.Write(u"Kotoban.ini"_s, "[setting]\r\n" + line);
        EXPECT_EQ(file.Read(DefaultSettings(), UpperBounds(300), &messages).pageColour, choice) << line.toStdString();
    }
    EXPECT_TRUE(messages.isEmpty()) << "unknown colours are silently replaced";
}

TEST(Zoom, AnyStartOrStep_StaysWithinZoomSteps)
{
    const Rows<double, int> rows = {{6, 100},  {9, 100},  {10, 100}, {11, 125},
                                    {14, 150}, {20, 200}, {24, 250}, {72, 300}};
    for (const auto &[points, percent] : rows)
        EXPECT_EQ(ZoomForDesktopFont(points), percent) << points;
    EXPECT_EQ(ZoomBy(100, -1), 100);
    EXPECT_EQ(ZoomBy(200, 1), 250);
    EXPECT_EQ(ZoomBy(150, 99), 300);
    const TestFolder folder;
    const SettingsFile file(folder.Path(u"a.ini"_s));
    EXPECT_EQ(file.ReadZoom(), 0);
    EXPECT_TRUE(file.WriteZoom(175));
    EXPECT_EQ(file.ReadZoom(), 175);
    file.WriteZoom(180);
    EXPECT_EQ(file.ReadZoom(), 0) << "not a step";
}

TEST(Editor, KnownEditor_GetsLineOption)
{
    const Rows<QString, QString> rows = {
        {u"notepad.exe"_s, u"notepad.exe \"C:\\a b\\x.txt\""_s},
        {u"C:\\Tools\\Sakura.EXE"_s, u"C:\\Tools\\Sakura.EXE -Y=12 \"C:\\a b\\x.txt\""_s},
        {u"C:\\sakura.exe\\hidemaru.exe"_s, u"C:\\sakura.exe\\hidemaru.exe /j12 \"C:\\a b\\x.txt\""_s},
        {u"TeraPad.exe"_s, u"TeraPad.exe /j=12 \"C:\\a b\\x.txt\""_s},
    };
    for (const auto &[editor, commandLine] : rows)
        EXPECT_EQ(EditorCommandLine(editor, u"C:\\a b\\x.txt"_s, 12), commandLine);

    for (const QString &file : {u"/txt/a\" -x \"b.txt"_s, u"/txt/a\\\" \\.txt"_s}) // not possible on Windows
        EXPECT_EQ(ParseCommandLine(EditorCommandLine(u"ed"_s, file, 1), [](const QString &) { return true; }).arguments,
                  QStringList(file));

    RecordingServices services;
    services.startsPrograms = false;
    OpenInEditor(services, u"gone.exe"_s, u"x.txt"_s, 1);
    EXPECT_EQ(services.TakeMessages(), QStringList(u"次のコマンドを起動できません。\r\n  gone.exe \"x.txt\""_s));
}

using SettingsWindowTest = WindowTest;

TEST_F(SettingsWindowTest, EditorOutsideCodePage_IsRefusedAndKeysChangeFontSize)
{
    frmIni window(services, msg, DefaultSettings(), UpperBounds(300), nullptr);
    Settings settings = DefaultSettings();
    settings.FontSize = 11.25f;
    script.When(u"frmIni"_s, [](QWidget *dialog) {
        EXPECT_EQ(dialog->focusWidget()->objectName(), u"optFontSize1");
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Right);
        auto *const editor = dialog->findChild<QLineEdit *>(u"txtTextEditor"_s);
        editor->setText(u"/opt/é/𠮷 é"_s);
        dialog->findChild<QAbstractButton *>(u"cmdChangeSetting"_s)->click();
        EXPECT_TRUE(dialog->isVisible());
        editor->setText(u"notepad.exe"_s);
        dialog->findChild<QAbstractButton *>(u"cmdChangeSetting"_s)->click();
    });
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    EXPECT_TRUE(window.Edit(&settings));
    EXPECT_EQ(settings.FontSize, 12.75f);
    EXPECT_EQ(script.messages, QStringList(u"テキストエディタに使えない文字が含まれています。\n  é 𠮷"_s));
    EXPECT_TRUE(services.messages.isEmpty());
}

TEST(Speech, SpeakHostileWord_WritesScriptAndStartsOnlyTheVoice)
{
    const TestFolder folder;
    RecordingServices services;
    const QString hostile = u"\"+new ActiveXObject(\"WScript.Shell\").Run(\"notepad\")+\""_s;
    SpeakWord(services, folder.Path(), u"日本\\"_s);
    SpeakWord(services, folder.Path(), hostile);
    EXPECT_EQ(FromCodePage932(folder.Read(u"speak.js"_s)),
              u"var tts = WScript.CreateObject(\"SAPI.SpVoice\");\r\ntts.Speak(\""_s + hostile + u"\");\r\n"_s);
    SpeakWord(services, folder.Path(u"none"_s), u"no script"_s);
    EXPECT_EQ(services.spoken, QStringList({u"日本\\"_s, hostile, u"no script"_s}));
    EXPECT_TRUE(services.opened.isEmpty() && services.commands.isEmpty() && services.messages.isEmpty());
}
