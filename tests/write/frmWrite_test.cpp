// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The writing window: that its keys, buttons and pointer reach the rules, and that nothing typed is lost.
#include "write/frmWrite.h"
#include "base/modCodePage.h"
#include "support/DropFiles.h"
#include "support/Rows.h"
#include "support/WindowTest.h"
#include "write/WritePage.h"
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
        QMouseEvent move(QEvent::MouseMove, at(to), text->viewport()->mapToGlobal(at(to)), Qt::NoButton,
                         Qt::LeftButton, {});
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
        QInputMethodEvent closed;
        closed.setCommitString(u"］"_s);
        QApplication::sendEvent(text, &closed);
        QTest::keyClicks(text, u"."_s);
        EXPECT_EQ(Line(2), u"four[a]b[水]."_s);
    });
}
