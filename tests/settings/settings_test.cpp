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

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include <filesystem>
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
        EXPECT_EQ(settings.FontSize, QByteArray(name) == "offered font size" ? 11.25f : 9.75f) << name;
        EXPECT_TRUE(IsEditorUsable(settings.TextEditor)) << name;
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
    settings.pageColour = PageColourChoice::Dark;
    settings.isWrapping = false;
    EXPECT_TRUE(file.WritePageLook(settings));
    EXPECT_TRUE(file.WriteFormSize(QSize(800, 600), false));
    EXPECT_TRUE(file.WriteFormSize(QSize(), true)) << "the size is kept";
    const QByteArray written = "[setting]\r\nFontsize=12.75\r\nLineSpace=5\r\nTextEditor=notepad.exe\r\n"
                               "bolDispLineNum=False\r\nFormLeft=120\r\nPageColour=Dark\r\nWrap=False\r\n"
                               "FormWidth=800\r\nFormHeight=600\r\nFormMaximized=True\r\n";
    EXPECT_EQ(folder.Read(u"Kotoban.ini"_s), written);
    Settings unwritable = DefaultSettings();
    unwritable.TextEditor = u"a\nb"_s;
    EXPECT_FALSE(file.WriteFileIniEx(unwritable));
    EXPECT_EQ(folder.Read(u"Kotoban.ini"_s), written) << "all settings or none";
    QStringList messages;
    const Settings read = file.Read(DefaultSettings(), UpperBounds(300), &messages);
    EXPECT_TRUE(messages.isEmpty());
    EXPECT_EQ(read.FontSize, 12.75f);
    EXPECT_EQ(read.LineSpace, 5);
    EXPECT_EQ(read.FormLeft, 120);
    EXPECT_FALSE(read.bolDispLineNum);
    EXPECT_EQ(read.pageColour, PageColourChoice::Dark);
    EXPECT_FALSE(read.isWrapping);
    EXPECT_EQ(read.formSize, QSize(800, 600));
    EXPECT_TRUE(read.isFormMaximized);
    folder.Write(u"Kotoban.ini"_s, "[setting]\r\nbolDispLineNum=1\r\nFormLeft=-7\r\n");
    EXPECT_FALSE(file.Read(DefaultSettings(), UpperBounds(300), &messages).bolDispLineNum) << "1 is not True";
    messages.clear();
    const Rows<QByteArray, PageColourChoice> colours = {
        {"", PageColourChoice::Desktop},
        {"PageColour=pink\r\n", PageColourChoice::Desktop},
        {"PageColour=Light\r\n", PageColourChoice::Light},
        {"PageColour=desktop\r\n", PageColourChoice::Desktop},
        {"PageColour=Soft\r\n", PageColourChoice::Soft},
        {"PageColour=softdark\r\n", PageColourChoice::SoftDark},
    };
    for (const auto &[line, choice] : colours) {
        folder.Write(u"Kotoban.ini"_s, "[setting]\r\n" + line);
        EXPECT_EQ(file.Read(DefaultSettings(), UpperBounds(300), &messages).pageColour, choice) << line.toStdString();
    }
    EXPECT_TRUE(messages.isEmpty()) << "unknown colours are silently replaced";
}

TEST(Settings, FileOfVersion100_HoldsItsSettingsAndDefaultsForLaterOnes)
{
    const TestFolder folder;
    const SettingsFile file(folder.Write(u"Kotoban.ini"_s, "[setting]\r\nFormLeft=37\r\nFontsize=11.25\r\n"
                                                           "LineSpace=6\r\nTextEditor=NOTEPAD.EXE\r\n"
                                                           "bolDispLineNum=False\r\n"));
    QStringList messages;
    const Settings settings = file.Read(DefaultSettings(), UpperBounds(300), &messages);
    EXPECT_TRUE(messages.isEmpty());
    EXPECT_EQ(settings.FormLeft, 37);
    EXPECT_EQ(settings.FontSize, 11.25f);
    EXPECT_EQ(settings.LineSpace, 6);
    EXPECT_EQ(settings.TextEditor, u"NOTEPAD.EXE"_s);
    EXPECT_FALSE(settings.bolDispLineNum);
    EXPECT_EQ(settings.pageColour, PageColourChoice::Desktop);
    EXPECT_TRUE(settings.isWrapping);
    EXPECT_TRUE(settings.formSize.isEmpty() && !settings.isFormMaximized && settings.zoom == 0);
}

TEST(Settings, PrintSettings_FallBackOneByOneAndRoundTrip)
{
    const TestFolder folder;
    const SettingsFile file(folder.Path(u"Kotoban.ini"_s));
    const PrintSettings usual;
    EXPECT_EQ(file.ReadPrint(), usual) << "no file";
    const Rows<QByteArray, PrintSettings> rows = {
        {"PrintAnswers=FALSE", {.withAnswers = false}},
        {"PrintAnswers=0", usual},
        {"PrintBlankWidth=text", {.blankWidth = BlankWidth::AsInText}},
        {"PrintBlankWidth=Equal", {.blankWidth = BlankWidth::Equal}},
        {"PrintBlankWidth=3", usual},
        {"PrintLineGap=2", {.lineGapMm = 2}},
        {"PrintLineGap=1", usual},
        {"PrintLineGap=13", usual},
        {"PrintColumns=2", {.columns = 2}},
        {"PrintColumns=0", usual},
        {"PrintColumns=3", usual},
        {"PrintPointSize=18", {.points = 18}},
        {"PrintPointSize=9", usual},
        {"PrintPointSize=12pt", usual},
        {"PrintPointSize=99999999999", usual},
    };
    for (const auto &[line, expected] : rows) {
        folder.Write(u"Kotoban.ini"_s, "[setting]\r\n" + line + "\r\n");
        EXPECT_EQ(file.ReadPrint(), expected) << line.toStdString();
    }
    const PrintSettings other{false, BlankWidth::Equal, 12, 2, 10};
    EXPECT_TRUE(file.WritePrint(other));
    EXPECT_EQ(file.ReadPrint(), other);
}

TEST(Zoom, AnyStartOrStep_StaysWithinZoomSteps)
{
    const Rows<double, int> rows = {{6, 100},  {9, 100},  {10, 100}, {11, 125},
                                    {14, 150}, {20, 200}, {24, 250}, {72, 400}};
    for (const auto &[points, percent] : rows)
        EXPECT_EQ(ZoomForDesktopFont(points), percent) << points;
    EXPECT_EQ(ZoomBy(100, -1), 100);
    EXPECT_EQ(ZoomBy(200, 1), 250);
    EXPECT_EQ(ZoomBy(150, 99), 400);
    const TestFolder folder;
    const SettingsFile file(folder.Path(u"a.ini"_s));
    const auto zoom = [&file] {
        QStringList messages;
        return file.Read(DefaultSettings(), UpperBounds(300), &messages).zoom;
    };
    EXPECT_EQ(zoom(), 0);
    EXPECT_TRUE(file.WriteZoom(175));
    EXPECT_EQ(zoom(), 175);
    EXPECT_TRUE(file.WriteZoom(180));
    EXPECT_EQ(zoom(), 0) << "not a step";
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
    OpenInEditor(services, {u"gone.exe"_s, u"/none"_s}, u"x.txt"_s, 1);
    EXPECT_EQ(services.TakeMessages(), QStringList(u"次のコマンドを起動できません。\r\n  gone.exe \"x.txt\""_s));
}

TEST(Editor, ProgramFromDataFolderOrScriptHost_IsRefused)
{
    const TestFolder outer;
    const TestFolder folder;
    const auto create = [](const TestFolder &in, const QString &name) {
        return QDir::toNativeSeparators(in.Write(name, "#!/bin/sh\n"));
    };
    const QString hosts = u"sh DASH bash-static zsh-5.9 python python3.11 python3.13t pythonw3.exe "
                          u"perl5.36-x86_64-linux-gnu cmd.exe PowerShell.EXE pwsh-preview wscript.exe cscript "
                          u"mshta.exe rundll32.exe ash ksh93 mksh-static csh tcsh fish busybox tclsh8.6 wish node.exe "
                          u"ruby3.1 php8.2 lua5.4 osascript env nohup setsid nice timeout.exe xargs stdbuf"_s;
    for (const QString &name : hosts.split(u' '))
        EXPECT_TRUE(EditorRefusal(create(outer, name) + u" \"x.txt\""_s, folder.Path()).contains(u"シェル"))
            << name.toStdString();
    for (const QString &name : {u"ed"_s, u"nodepad.exe"_s, u"envedit"_s, u"shed"_s, u"shell.exe"_s, u"cmdedit.exe"_s,
                                u"pysh"_s, u"bash.d/ed"_s, u"zsh edit/ed.exe"_s})
        EXPECT_EQ(EditorRefusal(create(outer, name) + u" \"x.txt\""_s, folder.Path()), QString()) << name.toStdString();

    for (const QString &name : {u"sh. . "_s, u"C:sh"_s, u"sh.exe :stream"_s, u"python3.:a:b"_s}) // as Windows has them
        EXPECT_TRUE(EditorRefusal(u"\"/no folder/"_s + name + u"\" x"_s, folder.Path()).contains(u"シェル"))
            << name.toStdString();
    EXPECT_TRUE(EditorRefusal(outer.Path() + u"/x"_s.repeated(1'000'000), folder.Path()).contains(u"長すぎ"))
        << "a search in each of these folders would take hours";

    const QString program = create(folder, u"txt/a b.exe"_s);
    const QString study = create(folder, u"txt/run.txt"_s);
    const Rows<const char *, QString, QString> rows = {
        {"as written", program, u"txt"_s},
        {"in quotes, with arguments", u'"' + program + u"\" -x"_s, u"txt"_s},
        {"unquoted, with arguments", program + u" -x"_s, u"txt"_s},
        {"the study file itself", EditorCommandLine(u" "_s, study, 1), u"txt"_s},
        {"by another way", create(folder, u"ed"_s).chopped(2) + u"rec/../txt/run.txt"_s, u"txt"_s},
        {"deep inside", create(folder, u"rec/x/y/ed"_s), u"rec"_s},
        {"backups", create(folder, u"db_backup/ed"_s), u"db_backup"_s},
        {"out of it again", folder.Path(u"txt/../ed"_s), QString()},
        {"the application folder itself", create(folder, u"ed"_s), QString()},
        {"a folder with a similar name", create(folder, u"txt2/ed"_s), QString()},
        {"the folder of another program", create(outer, u"txt/ed"_s), QString()},
        {"missing", folder.Path(u"missing"_s), QString()},
        {"the default", u"notepad.exe \"x\""_s, QString()},
    };
    for (const auto &[what, commandLine, dataFolder] : rows) {
        const QString refusal = EditorRefusal(commandLine, folder.Path());
        EXPECT_EQ(refusal.section(u'\n', 3).section(u"フォルダは"_s, 0, 0), dataFolder) << what;
    }
    const QString before = QDir::currentPath();
    QDir::setCurrent(folder.Path(u"txt"_s));
    EXPECT_FALSE(EditorRefusal(u"../txt/run.txt"_s, folder.Path()).isEmpty());
    QDir::setCurrent(before);

    RecordingServices services;
    OpenInEditor(services, {program, folder.Path()}, study, 1);
    TryEditor(services, {program, folder.Path()});
    EXPECT_TRUE(services.commands.isEmpty());
    EXPECT_EQ(services.messages,
              QStringList(2, u"次のプログラムはテキストエディタとして使えません。\r\n  "_s + program +
                                 u"\r\n\r\ntxtフォルダは学習ファイルや記録などを置く場所なので，"
                                 u"そこにあるプログラムは起動しません。\r\n"
                                 u"設定画面で別のテキストエディタを指定してください。"_s));
}

TEST(Editor, RefusedProgramBehindLink_IsRefused)
{
    const TestFolder outer;
    const TestFolder folder;
    const QString inside = folder.Write(u"txt/ed"_s, QByteArray());
    const QString outside = outer.Write(u"real/ed"_s, QByteArray());
    const Rows<const char *, QString, QString, bool> rows = {
        {"shell", outer.Write(u"sh"_s, QByteArray()), outer.Path(u"a"_s), true},
        {"out of the folder", outside, folder.Path(u"txt/link"_s), true},
        {"into the folder", inside, outer.Path(u"b"_s), true},
        {"editor", outside, outer.Path(u"c"_s), false},
        {"linked folder", outer.Path(u"real"_s), folder.Path(u"rec"_s), false},
    };
    for (const auto &[what, target, link, isRefused] : rows) {
        std::error_code fault;
        std::filesystem::create_symlink(QFileInfo(target).filesystemFilePath(), QFileInfo(link).filesystemFilePath(),
                                        fault);
        if (fault)
            GTEST_SKIP() << "no links here";
        EXPECT_EQ(!EditorRefusal(link, folder.Path()).isEmpty(), isRefused) << what;
    }
    EXPECT_FALSE(EditorRefusal(outside, folder.Path()).isEmpty()) << "where the data folder really is";
}

namespace {

class SettingsWindowTest : public WindowTest
{
  protected:
    frmIni window{services, msg, DefaultSettings(), UpperBounds(300), folder.Path(), nullptr};
    Settings settings = DefaultSettings();
};

} // namespace

TEST_F(SettingsWindowTest, EditorInDataFolderOrOutsideCodePage_IsRefusedAndKeysChangeFontSize)
{
    settings.FontSize = 11.25f;
    settings.TextEditor = folder.Write(u"txt/run.txt"_s, QByteArray());
    script.When(u"frmIni"_s, [this](QWidget *dialog) {
        EXPECT_EQ(dialog->focusWidget()->objectName(), u"optFontSize1");
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Right);
        DialogScript::Press(dialog, u"cmdRunEditor"_s);
        EXPECT_EQ(services.TakeMessages().size(), 1);
        auto *const editor = dialog->findChild<QLineEdit *>(u"txtTextEditor"_s);
        editor->setText(u"/opt/é/𠮷 é"_s);
        DialogScript::Press(dialog, u"cmdChangeSetting"_s);
        EXPECT_TRUE(dialog->isVisible());
        editor->setText(u"notepad.exe"_s);
        DialogScript::Press(dialog, u"cmdChangeSetting"_s);
    });
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    EXPECT_TRUE(window.Edit(&settings));
    EXPECT_EQ(settings.FontSize, 12.75f);
    EXPECT_EQ(script.messages, QStringList(u"テキストエディタに使えない文字が含まれています。\n  é 𠮷"_s));
    EXPECT_TRUE(services.messages.isEmpty() && services.commands.isEmpty());
}

TEST_F(SettingsWindowTest, Zoom_IsTakenAndDesktopEditorIsExplained)
{
    settings.zoom = 150;
    script.When(u"frmIni"_s, [](QWidget *dialog) {
        auto *const zoom = dialog->findChild<QComboBox *>(u"cboZoom"_s);
        EXPECT_EQ(zoom->currentText(), u"150 %");
        zoom->setCurrentText(u"200 %"_s);
        auto *const editor = dialog->findChild<QLineEdit *>(u"txtTextEditor"_s);
        for (const QString &text : {u"notepad.ex"_s, u"NotePad.exe"_s}) {
            editor->setText(text);
            EXPECT_EQ(dialog->findChild<QLabel *>(u"lblDesktopEditor"_s)->isVisible(), text.endsWith(u"exe"));
        }
        DialogScript::Press(dialog, u"cmdChangeSetting"_s);
    });
    EXPECT_TRUE(window.Edit(&settings));
    EXPECT_EQ(settings.zoom, 200);
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
