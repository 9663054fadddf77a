// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/frmExport.h"
#include "exchange/modPrintSheet.h"
#include "exchange/modReadTable.h"
#include "exchange/modStudyFromText.h"
#include "records/modMarkList.h"
#include "support/Pieces.h"
#include "support/Rows.h"
#include "support/StudyText.h"
#include "support/WindowTest.h"
#include "text/modCheckText.h"
#include "text/modDecodeText.h"

#include <QRegularExpression>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The rows of a table, guards of formulas included.
QList<QStringList> RowsOf(const QString &text, QChar separator)
{
    Table table;
    int errorLine = 0;
    EXPECT_TRUE(ReadTable(text, {.separator = separator, .isGuarded = false}, &table, &errorLine)) << errorLine;
    QList<QStringList> rows;
    for (int row = 1; row <= table.RowCount(); ++row) {
        rows += QStringList();
        for (int column = 1; column <= table.CellCount(row); ++column)
            rows.back() += table.Cell(row, column).toString();
    }
    return rows;
}

/// Parses an import file by Anki's rules: first headers, which may include tags, then a table without comments.
QStringList ReadAnki(const QByteArray &bytes, QStringList *headers)
{
    static const QRegularExpression isHeader(u"^(#|tags:)"_s);
    QString text = QString::fromUtf8(bytes);
    for (headers->clear(); text.contains(isHeader); text = text.section(u'\n', 1))
        *headers += text.section(u'\n', 0, 0);
    text.remove(QRegularExpression(u"^#.*\n"_s, QRegularExpression::MultilineOption));
    QStringList notes;
    for (const QStringList &fields : RowsOf(text, u'\t')) {
        EXPECT_EQ(fields.size(), 1);
        notes += fields.front();
    }
    return notes;
}

/// Converts a note back to its line. A cloze ends at the first "}}" after it, and text after "::" is a hint.
QString LineOfNote(const QString &note)
{
    static const QRegularExpression cloze(u"\\{\\{c(\\d+)::(.*?)(::(.*?))?\\}\\}"_s);
    QString line;
    qsizetype done = 0;
    int number = 0;
    for (const QRegularExpressionMatch &match : cloze.globalMatch(note)) {
        EXPECT_EQ(match.captured(1), QString::number(++number)) << note.toStdString();
        EXPECT_FALSE(match.hasCaptured(4)) << note.toStdString();
        line += note.sliced(done, match.capturedStart() - done) + u'[' + match.captured(2) + u']';
        done = match.capturedEnd();
    }
    return QString(line + note.sliced(done)).remove(QChar(0x200B));
}

QByteArray ExportOfLines(const QStringList &lines, ExportKind kind)
{
    const TestFolder folder;
    return ExportOf(folder.WriteStudyFile(u"a.txt"_s, lines), kind);
}

const QStringList Lines = {
    u"[水]の化学式は[H2O]，空欄なし"_s,
    u"no blank, \"no\" row"_s,
    u"[]"_s,
    u"[] beside [a]"_s,
    u"  [ ]\t[tab]"_s,
    u"#[comment]"_s,
    u"tags:[header]"_s,
    u"\"[quoted]\" [a\"b] \"\""_s,
    u"a,[b,c],d"_s,
    u"[a}] [:b] [c:] [{d] [e}}f] [g::h] {[i]}"_s,
    u"{{c1::j}} ::: [k]:"_s,
    u"｢図｣ [l] <b>&amp;\\n"_s,
};

} // namespace

TEST(AnkiExport, LinesWithBlanks_ParseBackByAnkisRules)
{
    QStringList headers;
    QStringList lines;
    for (const QString &note : ReadAnki(ExportOfLines(Lines, ExportKind::Anki), &headers))
        lines += LineOfNote(note);
    EXPECT_EQ(headers, QStringList({u"#separator:tab"_s, u"#html:false"_s, u"#notetype:Cloze"_s}));
    QStringList expected = Lines;
    expected.removeAt(2);
    expected.removeAt(1);
    EXPECT_EQ(lines, expected);
    ReadAnki(ExportOfLines({u"tags:[first]"_s}, ExportKind::Anki), &headers);
    EXPECT_EQ(headers.size(), 3) << "the first note must not become a header";
}

TEST(AnkiExport, AmbiguousCharacters_AreSeparatedOnlyWhereNeeded)
{
    EXPECT_EQ(ExportOfLines({u"a: {b} [c]，[] [d]: e"_s}, ExportKind::Anki).split('\n')[3],
              u"a: {b} {{c1::c}}，[] {{c2::d}}\u200B: e"_s.toUtf8());
    EXPECT_EQ(ExportOfLines({u"[a}]::"_s}, ExportKind::Anki).split('\n')[3],
              u"{{c1::a}\u200B}}\u200B:\u200B:"_s.toUtf8());
}

TEST(CsvExport, CellsLikeFormulas_AreGuarded)
{
    EXPECT_EQ(ExportOfLines({u"-1|x[@SUM(1,2)]'=1"_s}, ExportKind::Csv).split('\n')[1],
              "1,'-1|x,\"'@SUM(1,2)\",''=1\r");
}

TEST(StudyExport, OnlyHard_ExportsOnlyMarkedBlanks)
{
    const TestFolder folder;
    const QStringList lines = {u"[a] is [b]"_s, u"[c]"_s, u"[] [d]"_s};
    const QString path = folder.WriteStudyFile(u"a.txt"_s, lines);
    const MarkList marks(folder.Path(u"ListMark.txt"_s), u"花子"_s);
    ASSERT_FALSE(marks.Write(u"a"_s, DisplayText(LinesOf(lines)), {2, 5}));
    EXPECT_EQ(ExportOf(path, ExportKind::Anki, &marks).split('\n').sliced(3),
              QByteArrayList({"a is {{c1::b}}", " {{c1::d}}", ""}));
    EXPECT_EQ(ExportOf(path, ExportKind::Csv, &marks).split('\n').sliced(1),
              QByteArrayList({"1,[a] is ,b,\r", "3,[] ,d,\r", ""}));

    QString sheet = folder.Path(u"a.html"_s);
    EXPECT_EQ(WriteSheet(path, sheet, true, &marks), QString());
    const QString html = QString::fromUtf8(folder.Read(u"a.html"_s));
    EXPECT_EQ(html.count(u"class=\"line\""), 2);
    EXPECT_TRUE(html.contains(u" a  is <span class=\"blank\">①")) << html.toStdString();
    EXPECT_TRUE(html.contains(u"<b>②</b>d</div>"));
}

TEST(StudyExport, LongFile_IsMadeInSmallPiecesThatGoOnCounting)
{
    constexpr int lines = 5000; // of 100 bytes
    const QByteArray line = QByteArray("[a]").repeated(33) + "x\r\n";
    const TestFolder folder;
    const QString path = folder.Write(u"a.txt"_s, line.repeated(lines));
    const Rows<ExportKind, int, QByteArray, QByteArray> rows = {
        {ExportKind::Text, lines, line, line},
        {ExportKind::Anki, 3 + lines, "#separator:tab\n", "{{c33::a}}x\n"},
        {ExportKind::Csv, 1 + 33 * lines, "", "\r\n5000," + line.chopped(6) + ",a,x\r\n"},
    };
    for (const auto &[kind, lineCount, beginning, end] : rows) {
        StudyExport made;
        ASSERT_FALSE(made.Read(path, kind));
        QByteArray all;
        for (QByteArray piece; made.Next(&piece); all += piece)
            ASSERT_LT(piece.size(), 1 << 19);
        EXPECT_EQ(all.count('\n'), lineCount);
        EXPECT_TRUE(all.contains(beginning) && all.endsWith(end)) << int(kind);
        EXPECT_EQ(made.Done(), 1);
    }
    PrintSheet sheet;
    ASSERT_FALSE(sheet.Read(path, folder.Path(u"a.html"_s), {}));
    EXPECT_EQ(sheet.BlankCount(), 33 * lines);
    EXPECT_EQ(sheet.PageCount(), 179 + 1375) << "28 lines and 120 answers on a page";
    QByteArray all;
    for (QByteArray piece; sheet.Next(&piece); all += piece)
        ASSERT_LT(piece.size(), 1 << 19);
    EXPECT_EQ(all.count("class=\"line\""), lines);
    EXPECT_TRUE(all.contains("<small>(165000)</small>") && all.contains("<div><b>(165000)</b>a</div>\n</div>"));
    EXPECT_EQ(all.count("<section"), 1);
}

TEST(PieceFile, NotWrittenToTheEnd_LeavesOldFileAndNoOther)
{
    const TestFolder folder;
    const QString path = folder.Write(u"a.txt"_s, QByteArray("[a]\r\n").repeated(10'000));
    folder.Write(u"rec/a.csv"_s, "old");
    const QDir rec(folder.Path(u"rec"_s));
    {
        StudyExport made;
        ASSERT_FALSE(made.Read(path, ExportKind::Csv));
        PieceFile file(rec.filePath(u"a.csv"_s), made);
        EXPECT_TRUE(file.GoOn(QDeadlineTimer(0)));
        EXPECT_TRUE(file.GoOn(QDeadlineTimer(0)));
    }
    EXPECT_EQ(rec.entryList(QDir::Files), QStringList(u"a.csv"_s));
    EXPECT_EQ(folder.Read(u"rec/a.csv"_s), "old");
}

TEST(StudyExport, UnreadableOrBlankless_IsRefusedWithReason)
{
    const TestFolder folder;
    const Rows<const char *, QByteArray, ExportKind, QString, bool> rows = {
        {"another encoding", "\xE6\xB0\xB4", ExportKind::Text, u"文字コード＝UTF8\r\n"_s, true},
        {"an unclosed bracket", "ok\r\n[a", ExportKind::Csv, BracketCountMessage(2, u"[a"), false},
        {"too long because of tabs", QByteArray(51, '\t'), ExportKind::Text, u"102byte"_s, true},
        {"no blank", "a", ExportKind::Csv, QString(), false},
        {"only an empty blank", "[]", ExportKind::Anki, QString(), false},
        {"accepted", "a", ExportKind::Text, QString(), true},
        {"accepted", "[]", ExportKind::Csv, QString(), true},
    };
    for (const auto &[name, file, kind, part, hasContent] : rows) {
        StudyExport made;
        const QString message = made.Read(folder.Write(u"a.txt"_s, file), kind).message;
        EXPECT_TRUE(message.contains(part) && message.isEmpty() == part.isEmpty()) << name << message.toStdString();
        EXPECT_EQ(made.HasContent(), hasContent) << name;
    }
}

TEST(ExportedMessage, UndecodableBytes_AreCounted)
{
    const TestFolder folder;
    StudyExport made;
    ASSERT_FALSE(
        made.Read(folder.Write(u"a.txt"_s, "\x93\xFA\x96\x7B\x8C\xEA [\x82\xA0] \xFD \xFD"), ExportKind::Text));
    AllPieces(made);
    EXPECT_TRUE(ExportedMessage(u"rec/a.csv"_s, made.Undecodable()).contains(u"バイトが2個"_s));
    EXPECT_EQ(ExportedMessage(u"rec/a.csv"_s, 0), u"書き出しました。\r\n    ファイル名＝a.csv"_s);
}

using ExportWindowTest = WindowTest;

TEST_F(ExportWindowTest, OlderExportExists_AsksBeforeReplacingAndShowsFolder)
{
    const QString studyFile = folder.WriteStudyFile(u"txt/a.b.txt"_s, {u"x[a]"_s});
    folder.Write(u"rec/a.b.csv"_s, "old");
    folder.MakeFolder(u"rec/a.b_Anki.txt"_s);
    const MarkList marks(folder.Path(u"ListMark.txt"_s), u"花子"_s);
    frmExport window(services, msg, marks, folder.Path(u"rec"_s), nullptr);
    script.When(u"frmExport"_s, [](QWidget *dialog) {
        EXPECT_EQ(dialog->focusWidget()->objectName(), u"optText");
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Down);
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Return);
    });
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    script.When(u"frmExport"_s, [](QWidget *dialog) {
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Down);
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Return);
    });
    script.Click(u"frmMsg"_s, u"cmdCancel"_s);
    script.When(u"frmExport"_s, [this](QWidget *dialog) {
        EXPECT_EQ(folder.Read(u"rec/a.b.csv"_s), "old");
        services.startsPrograms = false;
        dialog->findChild<QAbstractButton *>(u"cmdOK"_s)->click();
    });
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    window.Run({studyFile});
    EXPECT_TRUE(script.IsDone());
    EXPECT_EQ(folder.Read(u"rec/a.b.csv"_s), u"\uFEFF行,前,正解,後\r\n1,x,a,\r\n"_s.toUtf8());
    ASSERT_EQ(script.messages.size(), 4);
    EXPECT_TRUE(script.messages[0].endsWith(u"a.b_Anki.txt\n  通常のファイルではありません。"_s));
    EXPECT_EQ(script.messages[2], ReplaceExportQuestion(u"a.b.csv"_s).replace(u"\r\n"_s, u"\n"_s));
    EXPECT_EQ(script.messages[3], u"書き出しました。\n    ファイル名＝a.b.csv"_s);
    EXPECT_EQ(services.opened, QStringList(folder.Path(u"rec"_s)));
    EXPECT_EQ(services.openedIn, QStringList(u"c:\\"_s));
    EXPECT_EQ(services.messages, QStringList(u"次のフォルダを開けません。\r\n  "_s + folder.Path(u"rec"_s)));
}

TEST_F(ExportWindowTest, SeveralFiles_AreExportedWithOneQuestionAndOneReport)
{
    const QStringList paths = {folder.WriteStudyFile(u"txt/a.txt"_s, {u"[a]"_s}),
                               folder.WriteStudyFile(u"txt/b.txt"_s, {u"[b"_s}),
                               folder.WriteStudyFile(u"txt/c.txt"_s, {u"[c]"_s})};
    folder.Write(u"rec/a_UTF-8.txt"_s, "old");
    const MarkList marks(folder.Path(u"ListMark.txt"_s), u"花子"_s);
    const auto run = [&](const QString &answer) {
        frmExport window(services, msg, marks, folder.Path(u"rec"_s), nullptr);
        script.When(u"frmExport"_s, [](QWidget *dialog) {
            EXPECT_EQ(dialog->findChild<QLabel *>(u"lblFile"_s)->text(), u"3個のファイル"_s);
            DialogScript::Press(dialog, u"cmdOK"_s);
        });
        script.Click(u"frmMsg"_s, answer);
        script.Click(u"frmMsg"_s, u"cmdOK"_s);
        window.Run(paths);
        EXPECT_TRUE(script.IsDone());
        return script.messages.takeLast();
    };
    EXPECT_EQ(
        run(u"cmdCancel"_s),
        u"1個のファイルを書き出しました。\n  c.txt\n\n前のファイルがあるため，そのままにしました。\n  a_UTF-8.txt\n\n"
        u"次のファイルはできませんでした。\n  b.txt：次の行で[の数と]の数が不一致です。"_s);
    EXPECT_EQ(folder.Read(u"rec/a_UTF-8.txt"_s), "old");
    EXPECT_EQ(folder.Read(u"rec/c_UTF-8.txt"_s), "\xEF\xBB\xBF[c]\r\n");
    EXPECT_TRUE(run(u"cmdOK"_s).startsWith(u"2個のファイルを書き出しました。"_s));
    EXPECT_EQ(folder.Read(u"rec/a_UTF-8.txt"_s), "\xEF\xBB\xBF[a]\r\n");
    EXPECT_EQ(services.opened, QStringList(2, folder.Path(u"rec"_s)));
}

TEST_F(ExportWindowTest, VeryManyFiles_CanBeStopped)
{
    const QString path = folder.WriteStudyFile(u"txt/a.txt"_s, {u"[a]"_s});
    folder.MakeFolder(u"rec"_s);
    const MarkList marks(folder.Path(u"ListMark.txt"_s), u"花子"_s);
    frmExport window(services, msg, marks, folder.Path(u"rec"_s), nullptr);
    script.Click(u"frmExport"_s, u"cmdOK"_s);
    script.Click(u"frmWait"_s, u"cmdCancel"_s);
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    window.Run(QStringList(5000, path));
    EXPECT_TRUE(script.IsDone());
    EXPECT_TRUE(script.messages.value(0).contains(u"中止したため，残りました。"_s));
}

TEST_F(ExportWindowTest, OnlyHard_IsJudgedByTheFileAsItIsWhenExported)
{
    const QString studyFile = folder.WriteStudyFile(u"txt/a.txt"_s, {u"changed [b]"_s});
    folder.MakeFolder(u"rec"_s);
    const MarkList marks(folder.Path(u"ListMark.txt"_s), u"花子"_s);
    ASSERT_FALSE(marks.Write(u"a"_s, DisplayText(LinesOf({u"[a] is [b]"_s})), {2}));
    frmExport window(services, msg, marks, folder.Path(u"rec"_s), nullptr);
    script.When(u"frmExport"_s, [](QWidget *dialog) {
        DialogScript::Press(dialog, u"optCsv"_s);
        EXPECT_TRUE(dialog->findChild<QWidget *>(u"chkOnlyHard"_s)->isEnabled());
        DialogScript::Press(dialog, u"chkOnlyHard"_s);
        DialogScript::Press(dialog, u"cmdOK"_s);
    });
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    script.When(u"frmExport"_s, [this](QWidget *dialog) {
        folder.WriteStudyFile(u"txt/a.txt"_s, {u"[a] is [b]"_s});
        DialogScript::Press(dialog, u"cmdOK"_s);
    });
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    window.Run({studyFile});
    EXPECT_TRUE(script.IsDone());
    EXPECT_EQ(script.messages.value(0), NoHardBlankMessage(u"a"_s).replace(u"\r\n"_s, u"\n"_s));
    EXPECT_EQ(folder.Read(u"rec/a.csv"_s).split('\n').value(1), "1,[a] is ,b,\r");
}
