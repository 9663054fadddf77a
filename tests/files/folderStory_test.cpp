// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// A teacher's folder from beginning to end: files of all kinds are taken in, mended, printed, exported, handed out and
// taken in elsewhere. What is asked for stays the same all the way.
#include "files/frmFile.h"
#include "settings/modSettings.h"
#include "store/modDB_SQLite.h"
#include "support/DropFiles.h"
#include "support/WindowTest.h"
#include "text/modReadText.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QRegularExpression>
#include <QStringEncoder>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The characters of JIS X 0208 and ASCII in EUC, or in JIS.
QByteArray InEuc(const QString &text, bool isJis = false)
{
    QByteArray bytes;
    for (const QChar character : text) {
        const QByteArray pair = ToCodePage932(QString(character));
        if (pair.size() == 1) {
            bytes += pair;
            continue;
        }
        const int lead = quint8(pair[0]);
        const int trail = quint8(pair[1]);
        const int place = (lead < 0xA0 ? lead - 0x81 : lead - 0xC1) * 188 + trail - (trail < 0x7F ? 0x40 : 0x41);
        const int high = isJis ? 0 : 0x80;
        const QByteArray code = QByteArray(1, char(place / 94 + 0x21 + high)) + char(place % 94 + 0x21 + high);
        bytes += isJis ? "\x1B$B" + code + "\x1B(B" : code;
    }
    return bytes;
}

QByteArray InUtf16(const QString &text, QStringConverter::Encoding encoding)
{
    return QStringEncoder(encoding, QStringConverter::Flag::WriteBom)(text);
}

/// "①" to "㉑"
QChar Circled(qsizetype number)
{
    return QChar(number <= 20 ? 0x2460 + int(number) - 1 : 0x3251 + int(number) - 21);
}

struct ForeignFile
{
    QString name;
    QByteArray bytes;
    QStringList answers; ///< that are to be asked for
};

QList<ForeignFile> ForeignFiles()
{
    const QString plain = u"[東京]は日本の首都です。\n[富士山]は山です。\n"_s;
    const QStringList two = {u"東京"_s, u"富士山"_s};
    QString longLine;
    QStringList numbers;
    for (int number = 1; number <= 20; ++number) {
        numbers += QString::number(number);
        longLine += u"答えは["_s + numbers.last() + u"]です、"_s;
    }
    return {
        {u"01 utf8.txt"_s, (plain + u"｢地図｣を見る。\n"_s).toUtf8(), two},
        {u"02 bom.txt"_s, "\xEF\xBB\xBF" + plain.toUtf8(), two},
        {u"03 utf16le.txt"_s, InUtf16(plain, QStringConverter::Utf16LE), two},
        {u"04 utf16be.txt"_s, InUtf16(plain, QStringConverter::Utf16BE), two},
        {u"05 euc.txt"_s, InEuc(plain), two},
        {u"06 jis.txt"_s, InEuc(plain, true), two},
        {u"07 full width.txt"_s, ToCodePage932(u"［東京］は首都。\r\n［富士山］は山。\r\n"), two},
        {u"08 mixed.txt"_s, ToCodePage932(QString(u"［東京］は首都。\r\n"_s.repeated(10) + u"[信濃川]は川。\r\n"_s)),
         QStringList(10, u"東京"_s) + QStringList(u"信濃川"_s)},
        {u"09 corner.txt"_s, ToCodePage932(u"「[東京]」は首都。「富士山」は山。\r\n"), {u"東京"_s}},
        {u"10 lf.txt"_s, ToCodePage932(plain), two},
        {u"11 cr.txt"_s, ToCodePage932(QString(plain).replace(u'\n', u'\r')), two},
        {u"12 long.txt"_s, ToCodePage932(longLine), numbers},
        {u"13 accents.txt"_s, u"[caf\u00E9]\n[\u0153uf] na\u00EFve\n"_s.toUtf8(), {u"cafe"_s, u"oeuf"_s}},
        {u"14 emoji.txt"_s, u"[笑顔\U0001F600]\U0001F44D\n"_s.toUtf8(), {u"笑顔"_s}},
        {u"15 kana.csv"_s, ToCodePage932(u"ﾈｺ,猫\r\nｲﾇ,犬\r\n"), {u"猫"_s, u"犬"_s}},
        {u"16 words.tsv"_s, InUtf16(u"apple\tりんご\nbook\t本\n"_s, QStringConverter::Utf16LE), {u"りんご"_s, u"本"_s}},
    };
}

class FolderStory : public WindowTest
{
  protected:
    FolderStory()
    {
        EXPECT_EQ(database.Open(u":memory:"_s), 0);
        EXPECT_TRUE(DBCreateKotoban(database));
        for (const QString &name : {u"txt"_s, u"rec"_s, u"class"_s}) {
            folder.MakeFolder(name);
            elsewhere.MakeFolder(name);
        }
    }

    /// Opens the window of an application folder, closed after a step in it.
    void InWindow(const TestFolder &application, const std::function<void(QWidget *)> &step)
    {
        const SettingsFile settings(application.Path(u"Kotoban.ini"_s));
        frmFile window(services, database, msg, settings, application.Path(), u"花子"_s, nullptr);
        script.When(u"frmFile"_s, [this, step](QWidget *dialog) {
            step(dialog);
            script.When(u"frmFile"_s, [](QWidget *last) { last->close(); }); // after what the step has added
        });
        window.Choose(QString());
        EXPECT_TRUE(script.IsDone());
    }

    /// Presses a button for all files, then OK in the windows that this opens.
    void ForAll(QWidget *dialog, const QString &command, const QStringList &windows)
    {
        dialog->findChild<QListView *>(u"lstFile"_s)->selectAll();
        for (const QString &window : windows)
            script.Click(window, u"cmdOK"_s);
        DialogScript::Press(dialog, command);
    }

    /// Drops paths on the window, then answers OK, or no where writing is offered.
    void Take(QWidget *dialog, const QStringList &paths, int tables)
    {
        EXPECT_TRUE(DropFiles(paths, dialog));
        script.Click(u"frmMsg"_s, u"cmdOK"_s);
        for (int table = 0; table < tables; ++table) {
            script.Click(u"frmTable"_s, u"cmdOK"_s);
            script.Click(u"frmMsg"_s, u"cmdCancel"_s);
        }
    }

    static void ExpectAnswers(const TestFolder &application, const QString &suffix)
    {
        static const QRegularExpression blank(u"\\[([^\\]]*)\\]"_s);
        for (const ForeignFile &file : ForeignFiles()) {
            const QString name = u"txt/"_s + file.name.section(u'.', 0, 0) + suffix + u".txt"_s;
            QStringList answers;
            for (const QRegularExpressionMatch &match : blank.globalMatch(FromCodePage932(application.Read(name))))
                answers += match.captured(1);
            EXPECT_EQ(answers, file.answers) << name.toStdString();
            StudyLines lines;
            const TextRefusal refusal = ReadStudyText(application.Path(name), 100, &lines);
            EXPECT_FALSE(refusal) << name.toStdString() << refusal.message.toStdString();
        }
    }

    StudyDatabase database{services};
    TestFolder elsewhere; // another application folder
};

} // namespace

TEST_F(FolderStory, SixteenForeignFiles_AskForTheSameEverywhere)
{
    QStringList paths = {folder.Write(u"from/地図.png"_s, "picture")};
    for (const ForeignFile &file : ForeignFiles())
        paths += folder.Write(u"from/"_s + file.name, file.bytes);
    InWindow(folder, [&](QWidget *dialog) { Take(dialog, paths, 2); });
    InWindow(folder, [&](QWidget *dialog) {
        ForAll(dialog, u"cmdMend"_s, {u"frmMend"_s, u"frmMsg"_s});
        EXPECT_TRUE(script.messages.last().startsWith(u"11個のファイルを直しました。"_s))
            << script.messages.last().toStdString();
        ForAll(dialog, u"cmdPrint"_s, {u"frmPrint"_s, u"frmMsg"_s});
        EXPECT_TRUE(script.messages.last().startsWith(u"16個のファイルを印刷ページにしました。"_s));
        ForAll(dialog, u"cmdExport"_s, {u"frmExport"_s, u"frmMsg"_s});
        EXPECT_TRUE(script.messages.last().startsWith(u"16個のファイルを書き出しました。"_s));
        script.When(u"QFileDialog"_s, [this](QWidget *chooser) {
            chooser->findChild<QLineEdit *>(u"fileNameEdit"_s)->setText(folder.Path(u"class"_s));
            static_cast<QDialog *>(chooser)->accept();
        });
        ForAll(dialog, u"cmdHandOut"_s, {u"frmMsg"_s});
        EXPECT_TRUE(script.messages.last().startsWith(u"17個のファイルを書き出しました。"_s));
    });
    ExpectAnswers(folder, QString());
    for (const ForeignFile &file : ForeignFiles()) {
        const QString title = file.name.section(u'.', 0, 0);
        const QString sheet = QString::fromUtf8(folder.Read(u"rec/"_s + title + u"_印刷.html"_s));
        EXPECT_TRUE(sheet.contains(Circled(file.answers.size()))) << title.toStdString();
        EXPECT_FALSE(sheet.contains(Circled(file.answers.size() + 1))) << title.toStdString();
    }
    EXPECT_EQ(folder.Read(u"txt/14 emoji.txt.bak"_s), ForeignFiles()[13].bytes);
    EXPECT_EQ(QDir(folder.Path(u"class"_s)).entryList(QDir::Files).size(), 17);

    InWindow(elsewhere, [&](QWidget *dialog) { Take(dialog, {folder.Path(u"class"_s)}, 0); });
    ExpectAnswers(elsewhere, QString());
    EXPECT_EQ(elsewhere.Read(u"txt/地図.png"_s), "picture");
    QStringList exported;
    for (const QString &name : QDir(folder.Path(u"rec"_s)).entryList({u"*_UTF-8.txt"_s}))
        exported += folder.Path(u"rec/"_s + name);
    InWindow(elsewhere, [&](QWidget *dialog) { Take(dialog, exported, 0); });
    InWindow(elsewhere, [&](QWidget *dialog) { ForAll(dialog, u"cmdMend"_s, {u"frmMsg"_s}); });
    ExpectAnswers(elsewhere, u"_UTF-8"_s);
}
