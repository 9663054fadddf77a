// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The writing window: that its keys, buttons and pointer reach the rules, and that nothing typed is lost.
#include "base/modCodePage.h"
#include "support/DropFiles.h"
#include "support/Rows.h"
#include "support/WindowTest.h"
#include "write/WritePage.h"
#include "write/frmWrite.h"
#include "write/modCleanText.h"

#include <QAction>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QPushButton>
#include <QTest>
#include <QTextBlock>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class WriteWindowTest : public WindowTest
{
  protected:
    WriteWindowTest()
    {
        path = folder.WriteStudyFile(u"txt/good.txt"_s, {u"one [two] three"_s, u"four"_s});
    }

    /// Opens a window for the file, closed after a step in it without saving.
    bool InWindow(const std::function<void()> &step)
    {
        script.When(u"frmWrite"_s, [this, step](QWidget *) {
            step();
            Leave();
        });
        return window.Edit(path);
    }

    /// Closes the window, throwing away what is not saved.
    void Leave()
    {
        if (text->document()->isModified())
            script.Click(u"frmMsg"_s, u"cmdCancel"_s);
        QTest::keyClick(text, Qt::Key_Escape);
    }

    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(text, key, modifiers);
    }

    QString Line(int number) const
    {
        return text->document()->findBlockByNumber(number - 1).text();
    }

    QByteArray Saved() const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QString Label(const QString &name) const
    {
        return Find<QLabel>(name)->text();
    }

    template <typename Part>
    Part *Find(const QString &name) const
    {
        return window.findChild<Part *>(name);
    }

    void Click(const QString &button) const
    {
        Find<QAbstractButton>(button)->click();
    }

    /// Draws the mouse over characters of a line, 0-based.
    void Drag(int line, int from, int to)
    {
        const auto at = [&](int column) {
            QTextCursor cursor(text->document()->findBlockByNumber(line - 1));
            cursor.setPosition(cursor.position() + column);
            return text->cursorRect(cursor).center();
        };
        QTest::mousePress(text->viewport(), Qt::LeftButton, {}, at(from));
        QMouseEvent move(QEvent::MouseMove, at(to), text->viewport()->mapToGlobal(at(to)), Qt::NoButton, Qt::LeftButton,
                         {});
        QApplication::sendEvent(text->viewport(), &move);
        QTest::mouseRelease(text->viewport(), Qt::LeftButton, {}, at(to));
    }

    QString path;
    frmWrite window{services, msg, DefaultSettings(), folder.Path(), nullptr};
    WritePage *const text = Find<WritePage>(u"txtText"_s);
};

} // namespace

TEST_F(WriteWindowTest, TypedAndSaved_ReplacesTheFileAndKeepsTheOldOne)
{
    const QByteArray before = Saved();
    bool wasUnsaved = false;
    EXPECT_TRUE(InWindow([&] {
        QTest::keyClicks(text, u"new "_s);
        wasUnsaved = Find<QLabel>(u"lblUnsaved"_s)->isVisible();
        Press(Qt::Key_S, Qt::ControlModifier);
    }));
    EXPECT_TRUE(wasUnsaved);
    EXPECT_FALSE(Find<QLabel>(u"lblUnsaved"_s)->isVisibleTo(&window));
    EXPECT_EQ(Saved(), "new " + before);
    EXPECT_TRUE(QFile::exists(path + u".bak"_s));
    EXPECT_FALSE(QFile::exists(DraftPath(path)));
}

TEST_F(WriteWindowTest, ClosedWithoutSaving_AsksAndLeavesTheFile)
{
    const QByteArray before = Saved();
    EXPECT_FALSE(InWindow([&] { QTest::keyClicks(text, u"new"_s); }));
    EXPECT_EQ(script.messages.size(), 1);
    EXPECT_EQ(Saved(), before);
    EXPECT_FALSE(QFile::exists(DraftPath(path)));
    EXPECT_FALSE(InWindow([] {})) << "nothing to ask about";
    EXPECT_EQ(script.messages.size(), 1);
}

TEST_F(WriteWindowTest, Pen_MakesBlanksOfSelectionWordAndStrokeInOneStepEach)
{
    InWindow([&] {
        Press(Qt::Key_B, Qt::ControlModifier);
        EXPECT_EQ(Line(1), u"[one] [two] three"_s);
        Press(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(Line(1), u"one [two] three"_s);
        text->GoTo(1, 1, 7); // reaches into the blank
        Press(Qt::Key_B, Qt::ControlModifier);
        EXPECT_EQ(Line(1), u"[one two] three"_s);
        text->GoTo(1, 3);
        Press(Qt::Key_B, Qt::ControlModifier);
        EXPECT_EQ(Line(1), u"one two three"_s);
        text->selectAll(); // over two lines
        Press(Qt::Key_B, Qt::ControlModifier);
        EXPECT_EQ(Line(1), u"[one two three]"_s);
        EXPECT_EQ(Line(2), u"[four]"_s);
        Press(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(Line(1), u"one two three"_s);
        EXPECT_EQ(Line(2), u"four"_s);
        Click(u"cmdPen"_s);
        Drag(1, 4, 7);
        EXPECT_EQ(Line(1), u"one [two] three"_s);
        QTextCursor cursor(text->document()->findBlockByNumber(1));
        cursor.setPosition(cursor.position() + 2);
        QTest::mouseDClick(text->viewport(), Qt::LeftButton, {}, text->cursorRect(cursor).center());
        EXPECT_EQ(Line(2), u"[four]"_s);
        Click(u"cmdPen"_s);
        Drag(1, 0, 3);
        EXPECT_EQ(Line(1), u"one [two] three"_s) << "the pen is up";
    });
}

TEST_F(WriteWindowTest, TypedBrackets_AreHalfWidthAndClosed)
{
    InWindow([&] {
        text->GoTo(2, 5);
        QTest::keyClicks(text, u"[a]b"_s);
        EXPECT_EQ(Line(2), u"four[a]b"_s);
        QInputMethodEvent converted;
        converted.setCommitString(u"［"_s);
        QApplication::sendEvent(text, &converted);
        EXPECT_EQ(Line(2), u"four[a]b[]"_s);
        QInputMethodEvent word;
        word.setCommitString(u"水"_s);
        QApplication::sendEvent(text, &word);
        EXPECT_EQ(Line(2), u"four[a]b[水]"_s);
        QInputMethodEvent closed(u"の"_s, {}); // with the beginning of the next conversion
        closed.setCommitString(u"］"_s);
        QApplication::sendEvent(text, &closed);
        QInputMethodEvent next;
        next.setCommitString(u"の"_s);
        QApplication::sendEvent(text, &next);
        EXPECT_EQ(Line(2), u"four[a]b[水]の"_s);
    });
}

TEST_F(WriteWindowTest, BackspaceAfterAnOpeningBracket_RemovesThePairUnlessSomethingWasTyped)
{
    const Rows<const char *, std::function<void()>, QString> rows = {
        {"at once", [] {}, u"four"_s},
        {"after a letter", [this] { QTest::keyClicks(text, u"a"_s); }, u"four[]"_s},
        {"after a letter was removed",
         [this] {
             QTest::keyClicks(text, u"a"_s);
             Press(Qt::Key_Backspace);
         },
         u"four]"_s},
        {"elsewhere", [this] { Press(Qt::Key_Right); }, u"four["_s},
        {"in a pair that was there",
         [this] {
             text->undo();
             text->insertPlainText(u"[]"_s);
             Press(Qt::Key_Left);
         },
         u"four]"_s},
    };
    InWindow([&] {
        for (const auto &[name, between, expected] : rows) {
            text->GoTo(2, 5);
            QTest::keyClicks(text, u"["_s);
            between();
            Press(Qt::Key_Backspace);
            EXPECT_EQ(Line(2), expected) << name;
            while (text->document()->isUndoAvailable())
                text->undo();
        }
        text->GoTo(2, 5);
        QTest::keyClicks(text, u"["_s);
        Press(Qt::Key_Backspace);
        text->undo();
        EXPECT_EQ(Line(2), u"four[]"_s) << "one step";
    });
}

TEST_F(WriteWindowTest, Problems_AreListedGoneToAndMendedInOneStep)
{
    const QString longLine = QString(40, u'あ') + u"。"_s + QString(20, u'い');
    InWindow([&] {
        auto *const list = Find<QListView>(u"lstProblems"_s);
        const auto listed = [list] { return list->model()->rowCount(); };
        EXPECT_FALSE(list->isVisible());
        text->selectAll();
        text->insertPlainText(u"[a\ncafé\n"_s + longLine + u"\n｢none｣"_s);
        EXPECT_TRUE(WaitFor([&] { return listed() == 4; }));
        EXPECT_TRUE(list->isVisible());
        EXPECT_EQ(Label(u"lblProblems"_s), u"気になる所 4"_s);
        EXPECT_EQ(Find<QAbstractButton>(u"cmdMend"_s)->accessibleName(), u"直す 2"_s);
        text->GoTo(3, 1);
        EXPECT_EQ(Label(u"lblBytes"_s), u"122"_s);
        Press(Qt::Key_F8);
        EXPECT_EQ(text->CursorLine(), 3);
        EXPECT_EQ(text->textCursor().selectedText(), QString(11, u'い')) << "what is too much";
        Press(Qt::Key_F8);
        EXPECT_EQ(text->CursorLine(), 4);
        Press(Qt::Key_F8);
        EXPECT_EQ(text->CursorLine(), 1);
        list->setCurrentIndex(list->model()->index(1, 0));
        QTest::keyClick(list, Qt::Key_Return);
        EXPECT_EQ(text->textCursor().selectedText(), u"é"_s);
        EXPECT_TRUE(window.isVisible()) << "Enter belongs to the list";
        Click(u"cmdMend"_s);
        EXPECT_EQ(Line(2), u"cafe"_s);
        EXPECT_EQ(Line(3), QString(40, u'あ') + u'。');
        EXPECT_EQ(listed(), 2);
        Press(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(Line(2), u"café"_s);
        EXPECT_EQ(Line(3), longLine);
        text->clear();
        EXPECT_TRUE(WaitFor([&] { return !list->isVisible(); }));
    });
}

TEST_F(WriteWindowTest, SavingWithFaults_AsksAndReplacesWhatCannotBeSaved)
{
    EXPECT_TRUE(InWindow([&] {
        QTest::keyClicks(text, u"] "_s);
        script.Click(u"frmMsg"_s, u"cmdCancel"_s);
        Click(u"cmdSave"_s);
        EXPECT_TRUE(Saved().startsWith("one"));
        text->insertPlainText(u"é"_s);
        script.Click(u"frmMsg"_s, u"cmdCancel"_s);
        Click(u"cmdSave"_s);
        EXPECT_EQ(text->textCursor().selectedText(), u"é"_s);
        EXPECT_TRUE(Saved().startsWith("one"));
        script.Click(u"frmMsg"_s, u"cmdOK"_s);
        script.Click(u"frmMsg"_s, u"cmdOK"_s);
        Click(u"cmdSave"_s);
    }));
    EXPECT_TRUE(Saved().startsWith("] eone"));
    EXPECT_EQ(script.messages.size(), 4);
}

TEST_F(WriteWindowTest, ProgramEndsOrIsKilled_DraftIsOfferedOnce)
{
    Find<QTimer>(u"tmrKeep"_s)->setInterval(0);
    script.When(u"frmWrite"_s, [&](QWidget *) {
        QTest::keyClicks(text, u"new "_s);
        EXPECT_TRUE(WaitFor([&] { return QFile::exists(DraftPath(path)); })) << "what a kill leaves";
        QTest::keyClicks(text, u"er "_s);
        window.done(0); // as when the program ends
    });
    EXPECT_FALSE(window.Edit(path));
    EXPECT_EQ(Saved(), "one [two] three\r\nfour\r\n");
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    InWindow([&] {
        EXPECT_EQ(Line(1), u"new er one [two] three"_s);
        EXPECT_TRUE(Find<QLabel>(u"lblUnsaved"_s)->isVisible());
    });
    EXPECT_FALSE(QFile::exists(DraftPath(path))) << "thrown away";
    EXPECT_EQ(script.messages.size(), 2);
    InWindow([&] { EXPECT_EQ(Line(1), u"one [two] three"_s); });
    EXPECT_EQ(script.messages.size(), 2);
}

TEST_F(WriteWindowTest, FirstSaveGivenUp_DraftStaysWhereItIsOffered)
{
    const QString newPath = NewWrittenFile(folder.Path(u"txt"_s)).path;
    Find<QTimer>(u"tmrKeep"_s)->setInterval(0);
    script.When(u"frmWrite"_s, [&](QWidget *) {
        QTest::keyClicks(text, u"a]"_s);
        EXPECT_TRUE(WaitFor([&] { return QFile::exists(DraftPath(newPath)); }));
        script.When(u"frmName"_s, [](QWidget *dialog) {
            dialog->findChild<QLineEdit *>(u"txtName"_s)->setText(u"named"_s);
            DialogScript::Press(dialog, u"cmdOK"_s);
        });
        script.Click(u"frmMsg"_s, u"cmdCancel"_s); // not with a fault
        Press(Qt::Key_S, Qt::ControlModifier);
        EXPECT_TRUE(QFile::exists(DraftPath(newPath)));
        window.done(0); // as when the program ends
    });
    EXPECT_EQ(window.WriteNew(), QString());
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    script.When(u"frmWrite"_s, [&](QWidget *) {
        EXPECT_EQ(Line(1), u"a]"_s);
        Leave();
    });
    window.WriteNew();
    EXPECT_EQ(WithoutEndlessLines(QString(MaxWriteLine + 1, u'a') + u"\n\nb"_s),
              QString(MaxWriteLine, u'a') + u"\na\n\nb"_s);
}

TEST_F(WriteWindowTest, FileChangedMeanwhile_BothAreKept)
{
    EXPECT_TRUE(InWindow([&] {
        QTest::keyClicks(text, u"mine "_s);
        folder.Write(u"txt/good.txt"_s, "other\r\n");
        script.Click(u"frmMsg"_s, u"cmdCancel"_s);
        Click(u"cmdSave"_s);
        EXPECT_EQ(Saved(), "other\r\n");
        script.Click(u"frmMsg"_s, u"cmdOK"_s);
        Click(u"cmdSave"_s);
        EXPECT_TRUE(Saved().startsWith("mine one"));
        EXPECT_EQ(folder.Read(u"txt/good（ほかの変更）.txt"_s), "other\r\n");
        folder.Write(u"txt/good.txt"_s, "again\r\n");
        QTest::keyClicks(text, u"too "_s);
        script.Click(u"frmMsg"_s, u"cmdOther"_s);
        Click(u"cmdSave"_s);
    }));
    EXPECT_TRUE(Saved().startsWith("mine too one"));
    EXPECT_EQ(folder.Read(u"txt/good.txt.bak"_s), "again\r\n");
}

TEST_F(WriteWindowTest, OtherEncodingOrTooLarge_IsAChangedTextOrRefused)
{
    const QByteArray utf8 = u"日本の[山]と[川]\n"_s.toUtf8();
    path = folder.Write(u"txt/utf8.txt"_s, utf8);
    InWindow([&] {
        EXPECT_EQ(Line(1), u"日本の[山]と[川]"_s);
        EXPECT_TRUE(Find<QLabel>(u"lblUnsaved"_s)->isVisible());
    });
    EXPECT_EQ(Saved(), utf8);
    path = folder.Write(u"txt/large.txt"_s, QByteArray(MaxWriteBytes + 1, 'a'));
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    EXPECT_FALSE(window.Edit(path));
    EXPECT_TRUE(script.messages.last().contains(u"2"_s)) << script.messages.last().toStdString();
}

TEST_F(WriteWindowTest, FileThatCannotBeStudied_OpensMendedAsAChangedText)
{
    const QString longLine = QString(40, u'あ') + u"。"_s + QString(20, u'い');
    const Rows<const char *, QStringList, QString, QString> rows = {
        {"only full-width brackets", {u"［a］ b"_s, u"［c］"_s}, u"[a] b\n[c]\n"_s, u"2 か所を直しました"_s},
        {"a long line", {longLine}, QString(longLine).insert(41, u'\n') + u'\n', u"1 か所を直しました"_s},
        {"a hint", {u"［a］ [b]"_s}, u"［a］ [b]\n"_s, {}},
    };
    for (const auto &[name, lines, mended, notice] : rows) {
        folder.WriteStudyFile(u"txt/good.txt"_s, lines);
        const QByteArray before = Saved();
        InWindow([&] {
            EXPECT_EQ(text->toPlainText(), mended) << name;
            EXPECT_EQ(text->document()->isModified(), !notice.isEmpty()) << name;
            if (notice.isEmpty())
                return;
            EXPECT_EQ(Label(u"lblNotice"_s), notice) << name;
            Press(Qt::Key_Z, Qt::ControlModifier);
            EXPECT_EQ(text->toPlainText(), lines.join(u'\n') + u'\n') << name;
            EXPECT_FALSE(Find<QLabel>(u"lblUnsaved"_s)->isVisible()) << name;
        });
        EXPECT_EQ(Saved(), before) << name;
    }
}

TEST_F(WriteWindowTest, PastedBesideAnOldDraft_IsATextOfItsOwn)
{
    const WrittenFile old = NewWrittenFile(folder.Path(u"txt"_s));
    EXPECT_FALSE(WriteDraft(u"draft"_s, old));
    script.When(u"frmWrite"_s, [&](QWidget *) {
        EXPECT_EQ(text->toPlainText(), u"pasted"_s);
        Leave();
    });
    window.WriteNew(u"pasted"_s);
    EXPECT_TRUE(QFile::exists(DraftPath(old.path)));
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    script.When(u"frmWrite"_s, [&](QWidget *) {
        EXPECT_EQ(text->toPlainText(), u"draft"_s);
        Leave();
    });
    window.WriteNew();
}

TEST_F(WriteWindowTest, LinesChanged_ListFollowsWhateverElseIsThere)
{
    InWindow([&] {
        auto *const list = Find<QListView>(u"lstProblems"_s);
        const auto problems = [&] {
            QStringList lines;
            for (int row = 0; row < list->model()->rowCount(); ++row)
                lines += list->model()->index(row, 0).data().toString().section(u'行', 0, 0);
            return lines.join(u' ');
        };
        const auto becomes = [&](const QString &lines) {
            EXPECT_TRUE(WaitFor([&] { return problems() == lines; })) << problems().toStdString();
        };
        text->selectAll();
        text->insertPlainText(u"a]\n"_s + u"fine\n"_s.repeated(200) + u"b]"_s); // more than is checked at once
        becomes(u"1 202"_s);
        EXPECT_EQ(Label(u"lblBlanks"_s), u"空欄 0"_s);
        text->GoTo(1, 1);
        QTest::keyClick(text, Qt::Key_Return);
        becomes(u"2 203"_s);
        text->GoTo(100, 1);
        QTest::keyClicks(text, u"]"_s);
        becomes(u"2 100 203"_s);
        text->GoTo(2, 1);
        QTest::keyClicks(text, u"["_s); // "[a]"
        QTest::keyClick(text, Qt::Key_Backspace);
        becomes(u"2 100 203"_s);
        QTextCursor cursor(text->document());
        cursor.setPosition(text->document()->findBlockByNumber(50).position());
        cursor.setPosition(text->document()->findBlockByNumber(150).position(), QTextCursor::KeepAnchor);
        text->setTextCursor(cursor);
        QTest::keyClick(text, Qt::Key_Delete);
        becomes(u"2 103"_s);
        Press(Qt::Key_Z, Qt::ControlModifier);
        becomes(u"2 100 203"_s);
        text->GoTo(3, 1);
        QTest::keyClick(text, Qt::Key_Backspace);
        becomes(u"2 99 202"_s);
        text->clear();
        EXPECT_TRUE(WaitFor([&] { return !list->isVisible(); }));
    });
}

TEST_F(WriteWindowTest, Paste_IsCleanedInOneStepAndTellsWhatItDid)
{
    InWindow([&] {
        text->GoTo(2, 5);
        QGuiApplication::clipboard()->setText(u"x\r\ncafé😀"_s);
        Press(Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(Line(2), u"fourx"_s);
        EXPECT_EQ(Line(3), u"cafe"_s);
        auto *const geta = Find<QPushButton>(u"cmdNotice2"_s);
        EXPECT_TRUE(geta->isVisible());
        geta->click();
        EXPECT_EQ(Line(3), u"cafe〓"_s);
        Press(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(Line(2), u"four"_s);
        Press(Qt::Key_V, Qt::ControlModifier);
        EXPECT_TRUE(geta->isVisible());
        QTest::keyClicks(text, u"y"_s);
        EXPECT_FALSE(geta->isVisible()) << "it would undo what was typed";
        Press(Qt::Key_Z, Qt::ControlModifier);
        Press(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(Line(2), u"four"_s);
        QTest::keyClicks(text, u"z"_s);
        QGuiApplication::clipboard()->setText(u"é"_s);
        Press(Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(Line(2), u"fourze"_s);
        Press(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(Line(2), u"fourz"_s) << "what was typed before stays";
        Press(Qt::Key_Return, Qt::ShiftModifier);
        EXPECT_EQ(text->blockCount(), 4) << "a line like any other";
        for (int undone = 0; undone < 2; ++undone)
            Press(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(Line(2), u"four"_s);
        for (const qsizetype length : {MaxWriteLine + 1, MaxWriteLine - 3}) {
            QGuiApplication::clipboard()->setText(QString(length, u'a'));
            Press(Qt::Key_V, Qt::ControlModifier);
            EXPECT_EQ(Line(2), u"four"_s) << length;
        }
        QGuiApplication::clipboard()->setText(u"水\tH2O\n塩\tNaCl\n"_s);
        Press(Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_TRUE(text->toPlainText().contains(u"[NaCl]"_s)) << text->toPlainText().toStdString();
        text->selectAll();
        const QString lines = u"長い文章の途中で切れた行が\n続いている文章です。\n一つ目\n二つ目\n三つ目"_s;
        text->insertPlainText(lines);
        Press(Qt::Key_J, Qt::ControlModifier);
        EXPECT_EQ(text->toPlainText(), lines) << "the list would be one line";
        EXPECT_TRUE(Label(u"lblNotice"_s).startsWith(u"つなぐ行を選んでください"_s));
        text->GoTo(1, 1, 1);
        QTextCursor whole = text->textCursor();
        whole.setPosition(text->document()->findBlockByNumber(2).position(), QTextCursor::KeepAnchor);
        text->setTextCursor(whole); // both lines with their ends
        Press(Qt::Key_J, Qt::ControlModifier);
        EXPECT_EQ(text->toPlainText(), u"長い文章の途中で切れた行が続いている文章です。\n一つ目\n二つ目\n三つ目"_s);
        Press(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(text->toPlainText(), lines);
    });
}

TEST_F(WriteWindowTest, EmptyFile_OffersTemplatesWhoseSelectionIsTypedOver)
{
    script.When(u"frmWrite"_s, [&](QWidget *) {
        EXPECT_TRUE(Find<QPushButton>(u"cmdTemplate3"_s)->isVisible());
        EXPECT_FALSE(Find<QLabel>(u"lblUnsaved"_s)->isVisible());
        Click(u"cmdTemplate3"_s);
        EXPECT_FALSE(Find<QPushButton>(u"cmdTemplate3"_s)->isVisible());
        EXPECT_TRUE(text->textCursor().hasSelection());
        EXPECT_TRUE(Templates()[2].text.startsWith(Line(1)));
        script.When(u"frmName"_s, [&](QWidget *dialog) {
            dialog->findChild<QLineEdit *>(u"txtName"_s)->setText(u"good"_s);
            script.Click(u"frmMsg"_s, u"cmdOK"_s); // the name is taken
            DialogScript::Press(dialog, u"cmdOK"_s);
            dialog->findChild<QLineEdit *>(u"txtName"_s)->setText(u"history.txt"_s);
            DialogScript::Press(dialog, u"cmdOK"_s);
        });
        Click(u"cmdSave"_s);
        Leave();
    });
    EXPECT_EQ(window.WriteNew(), u"history.txt"_s);
    EXPECT_EQ(FromCodePage932(folder.Read(u"txt/history.txt"_s)),
              QString(Templates()[2].text).replace(u"\n"_s, u"\r\n"_s));
}

TEST_F(WriteWindowTest, FindAndGo_LeadThroughTheText)
{
    InWindow([&] {
        text->selectAll();
        text->insertPlainText(u"ab\ncd\nab"_s);
        text->GoTo(1);
        Press(Qt::Key_F, Qt::ControlModifier);
        auto *const field = Find<QLineEdit>(u"txtFind"_s);
        ASSERT_EQ(window.focusWidget(), field);
        QTest::keyClicks(field, u"ab"_s);
        QList<int> lines;
        for (int i = 0; i < 3; ++i) {
            QTest::keyClick(field, Qt::Key_Return);
            lines += text->CursorLine();
        }
        Click(u"cmdFindPrevious"_s);
        lines += text->CursorLine();
        EXPECT_EQ(lines, (QList<int>{1, 3, 1, 3}));
        field->setText(u"zz"_s);
        QTest::keyClick(field, Qt::Key_Return);
        EXPECT_TRUE(Find<QLabel>(u"lblNotFound"_s)->isVisible());
        text->setFocus();
        Press(Qt::Key_Escape);
        EXPECT_FALSE(field->isVisible());
        EXPECT_TRUE(window.isVisible());
        Press(Qt::Key_G, Qt::ControlModifier);
        auto *const line = Find<QLineEdit>(u"txtLine"_s);
        ASSERT_EQ(window.focusWidget(), line);
        QTest::keyClicks(line, u"2"_s);
        QTest::keyClick(line, Qt::Key_Return);
        EXPECT_EQ(text->CursorLine(), 2);
        EXPECT_EQ(window.focusWidget(), text);
    });
}

TEST_F(WriteWindowTest, LineNumbersOfFiveDigits_CoverNoText)
{
    InWindow([this] {
        const auto isTextFree = [this] {
            const QPoint left = text->viewport()->geometry().topLeft();
            return text->childAt(left) == text->viewport() && text->childAt(left - QPoint(1, 0)) != nullptr;
        };
        text->Insert(u"\n"_s.repeated(9'997));
        EXPECT_TRUE(isTextFree());
        Press(Qt::Key_Return);
        window.resize(window.size() + QSize(1, 1));
        EXPECT_TRUE(isTextFree());
        Press(Qt::Key_Backspace);
        EXPECT_TRUE(isTextFree());
    });
}

TEST_F(WriteWindowTest, LargeDesktopFont_CutsNoButtonOfTheSearch)
{
    QFont large = window.font();
    large.setPointSize(20);
    window.setFont(large);
    InWindow([&] {
        for (const int widthPx : {window.minimumWidth(), 3000}) {
            window.resize(widthPx, 600);
            Press(Qt::Key_F, Qt::ControlModifier);
            QCoreApplication::processEvents(); // lays out the row
            for (const QString &name : {u"cmdFindPrevious"_s, u"cmdFindNext"_s, u"cmdFindEnd"_s}) {
                const auto *const button = Find<QPushButton>(name);
                EXPECT_GE(button->width(), button->minimumSizeHint().width()) << widthPx << ' ' << name.toStdString();
            }
            EXPECT_EQ(Find<QLabel>(u"lblBytes"_s)->isVisible(), widthPx == 3000) << widthPx;
            Click(u"cmdFindEnd"_s);
            EXPECT_TRUE(Find<QLabel>(u"lblBytes"_s)->isVisible()) << widthPx;
        }
    });
}

TEST_F(WriteWindowTest, BlankInTheCursorsLine_IsTintedLikeAnother)
{
    InWindow([&] {
        text->selectAll();
        text->insertPlainText(u"[two] a\n[two] a"_s);
        text->GoTo(2, 8);
        const auto picture = [&](int line, int from, int to) {
            QTextCursor cursor(text->document()->findBlockByNumber(line - 1));
            const int start = cursor.position();
            cursor.setPosition(start + from);
            const QRect left = text->cursorRect(cursor);
            cursor.setPosition(start + to);
            return text->viewport()->grab(QRect(left.topLeft(), text->cursorRect(cursor).bottomLeft())).toImage();
        };
        EXPECT_EQ(picture(1, 1, 4), picture(2, 1, 4));
        EXPECT_NE(picture(1, 6, 7), picture(2, 6, 7)) << "the ground of the line";
    });
}

TEST_F(WriteWindowTest, PasteNotice_FitsAtTheUsualWidth)
{
    InWindow([&] {
        QGuiApplication::clipboard()->setText(u"\u2014é😀"_s.repeated(30));
        Press(Qt::Key_V, Qt::ControlModifier);
        const auto *const notice = Find<QLabel>(u"lblNotice"_s);
        EXPECT_GE(notice->width(), notice->fontMetrics().horizontalAdvance(notice->text()))
            << notice->text().toStdString();
        EXPECT_TRUE(Find<QPushButton>(u"cmdNotice2"_s)->isVisible());
    });
}

TEST_F(WriteWindowTest, DroppedPicture_IsCopiedAndNamed)
{
    QImage image(2, 2, QImage::Format_RGB32);
    image.fill(Qt::red);
    folder.MakeFolder(u"elsewhere"_s);
    const QString picture = folder.Path(u"elsewhere/leaf 1.PNG"_s);
    ASSERT_TRUE(image.save(picture));
    const QString noPicture = folder.Write(u"elsewhere/b.png"_s, "text");
    InWindow([&] {
        text->GoTo(2, 5);
        EXPECT_TRUE(DropFiles({picture}, text->viewport()));
        EXPECT_TRUE(WaitFor([&] { return text->toPlainText().contains(u"｢leaf_1｣"_s); }));
        EXPECT_TRUE(QFile::exists(folder.Path(u"txt/leaf_1.png"_s)));
        EXPECT_FALSE(Find<QWidget>(u"lstProblems"_s)->isVisible()) << "the picture is there";
        script.Click(u"frmMsg"_s, u"cmdCancel"_s);
        EXPECT_TRUE(DropFiles({picture}, text->viewport()));
        EXPECT_TRUE(WaitFor([&] { return script.messages.size() == 1; })) << "asks before it replaces";
        script.Click(u"frmMsg"_s, u"cmdOK"_s);
        EXPECT_TRUE(DropFiles({noPicture}, text->viewport()));
        EXPECT_TRUE(WaitFor([&] { return script.messages.size() == 2; }));
        EXPECT_TRUE(WaitFor(
            [&] { return !QApplication::activeModalWidget() || QApplication::activeModalWidget() == &window; }));
        EXPECT_EQ(text->toPlainText().count(u"leaf_1"_s), 1);
    });
}

TEST_F(WriteWindowTest, PictureOfAnotherFormatWithTheSameName_GetsANameOfItsOwn)
{
    QImage image(2, 2, QImage::Format_RGB32);
    image.fill(Qt::red);
    folder.MakeFolder(u"elsewhere"_s);
    for (const QString &name :
         {u"txt/leaf.png"_s, u"txt/leaf_2.PNG"_s, u"txt/near.jpg"_s, u"txt/near.bmp"_s, u"elsewhere/leaf.jpg"_s})
        ASSERT_TRUE(image.save(folder.Path(name)));
    const QByteArray old = folder.Read(u"txt/leaf.png"_s);
    const QByteArray fresh = folder.Read(u"elsewhere/leaf.jpg"_s);
    InWindow([&] {
        EXPECT_TRUE(DropFiles({folder.Path(u"elsewhere/leaf.jpg"_s)}, text->viewport()));
        EXPECT_TRUE(WaitFor([&] { return Line(1).contains(u"｢leaf_3｣"_s); })) << Line(1).toStdString();
        EXPECT_TRUE(DropFiles({folder.Path(u"txt/near.bmp"_s)}, text->viewport()));
        EXPECT_TRUE(WaitFor([&] { return Line(1).contains(u"｢near_2｣"_s); })) << "near.jpg would be shown";
    });
    EXPECT_EQ(script.messages.size(), 1) << "whether to save";
    EXPECT_EQ(folder.Read(u"txt/leaf.png"_s), old);
    EXPECT_EQ(folder.Read(u"txt/leaf_3.jpg"_s), fresh);
    EXPECT_EQ(folder.Read(u"txt/near_2.bmp"_s), folder.Read(u"txt/near.bmp"_s));
}
