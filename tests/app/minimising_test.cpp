// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Minimises and restores each window of the program. What the user typed, chose or scrolled to must still be there.
#include "app/frmLogin.h"
#include "exchange/frmTable.h"
#include "view/StudyWindowTest.h"
#include "write/frmWrite.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>

#include <gtest/gtest.h>

namespace {

/// Counts the events with which a window system shows a window that the program has not hidden.
class ShowCounter : public QObject
{
  public:
    int count = 0;

  protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::Show && event->spontaneous() ? 1 : 0;
        return false;
    }
};

/// What the user can see and change of a window's controls, one value per line.
QString StateOf(const QWidget *window)
{
    QStringList state;
    for (const QWidget *const widget : window->findChildren<QWidget *>()) {
        if (widget->window() != window)
            continue;
        for (const char *const property : {"text", "plainText", "currentText", "selectedText", "cursorPosition",
                                           "checked", "value", "enabled", "visible"})
            if (const QVariant value = widget->property(property); value.isValid())
                state += widget->objectName() + u'.' + QLatin1StringView(property) + u'=' + value.toString();
        if (const auto *const list = qobject_cast<const QAbstractItemView *>(widget))
            state +=
                widget->objectName() + u".rows=%1, %2"_s.arg(list->model()->rowCount()).arg(list->currentIndex().row());
    }
    state += u"focus="_s + (window->focusWidget() ? window->focusWidget()->objectName() : QString());
    return state.join(u'\n');
}

void MinimiseAndRestore(QWidget *window)
{
    ShowCounter shown;
    window->installEventFilter(&shown);
    const QString before = StateOf(window);
    for (const bool isMinimised : {true, false}) {
        window->setWindowState(isMinimised ? Qt::WindowMinimized : Qt::WindowNoState);
        QCoreApplication::processEvents();
    }
    EXPECT_GT(shown.count, 0) << window->objectName().toStdString();
    EXPECT_EQ(StateOf(window).toStdString(), before.toStdString()) << window->objectName().toStdString();
}

class MinimisingTest : public StudyWindowTest
{
  protected:
    /// Scripts the use of a dialog: some input, minimising and restoring it, and then what closes it.
    void Minimise(const QString &name, std::function<void(QWidget *)> input, std::function<void(QWidget *)> close)
    {
        script.When(name, [this, input = std::move(input), close = std::move(close)](QWidget *dialog) {
            input(dialog);
            MinimiseAndRestore(dialog);
            minimised += dialog->objectName();
            close(dialog);
        });
    }

    static void Cancel(QWidget *dialog)
    {
        DialogScript::Press(dialog, u"cmdCancel"_s);
    }

    static void Close(QWidget *dialog)
    {
        dialog->close();
    }

    /// Enters a text and leaves the focus there.
    static void Enter(const QWidget *dialog, const QString &control, const QString &text)
    {
        auto *const edit = dialog->findChild<QLineEdit *>(control);
        edit->setFocus();
        edit->setText(text);
    }

    QStringList minimised; // names of the dialogs
};

} // namespace

TEST_F(MinimisingTest, EachWindowRestored_IsUnchanged)
{
    frmLogin login{services, msg, folder.Path(u"ListUserName.txt"_s), QString()};
    Minimise(
        u"frmLogin"_s, [](QWidget *dialog) { Enter(dialog, u"txtUserName"_s, u"花"_s); }, Close);
    login.Ask();

    const auto makeUnreadable = [](QWidget *dialog) {
        dialog->findChild<QComboBox *>(u"cboTableSeparator"_s)->setCurrentText(u"カンマ"_s);
        EXPECT_EQ(dialog->findChild<QComboBox *>(u"cboUse1"_s), nullptr);
        Enter(dialog, u"txtName"_s, u"words"_s);
    };
    Minimise(u"frmTable"_s, makeUnreadable, Cancel);
    frmTable(msg, folder.Path(u"txt"_s), nullptr).Make(folder.Write(u"words.csv"_s, "\"a - b\tc\n"));

    const auto find = [](QWidget *dialog) {
        DialogScript::Press(dialog, u"cmdFind"_s);
        Enter(dialog, u"txtFind"_s, u"a"_s);
    };
    Minimise(u"frmWrite"_s, find, Close);
    EXPECT_TRUE(frmWrite(services, msg, DefaultSettings(), folder.Path(), nullptr).WriteNew().isEmpty());

    for (int number = 1; number <= 30; ++number)
        folder.WriteStudyFile(u"txt/第%1回.txt"_s.arg(number), {u"[a] [b] ｢none｣"_s});
    const auto filter = [](QWidget *dialog) {
        Enter(dialog, u"txtWeekN"_s, u"12"_s);
        Enter(dialog, u"txtFilter"_s, u"第2"_s);
        const auto *const total = dialog->findChild<QLabel *>(u"lblSumAns"_s);
        EXPECT_TRUE(WaitFor([total] { return total->text() == u"0"; }));
    };
    Minimise(u"frmFile"_s, filter, [](QWidget *dialog) {
        for (const QString &command : {u"cmdExport"_s, u"cmdPrint"_s, u"cmdSelect"_s})
            DialogScript::Press(dialog, command);
    });
    Minimise(
        u"frmExport"_s, [](QWidget *dialog) { DialogScript::Press(dialog, u"optCsv"_s); }, Cancel);
    Minimise(
        u"frmPrint"_s, [](QWidget *dialog) { DialogScript::Press(dialog, u"chkAnswers"_s); }, Cancel);
    Open();

    Press(Qt::Key_Return);
    MinimiseAndRestore(window.get());
    EXPECT_EQ(Label(u"lblNum"), u"1"_s);
    Child<QPushButton>(u"cmdSearch")->click();
    auto *const search = Child<QDialog>(u"frmSearch");
    Enter(search, u"txtSearch"_s, u"a"_s);
    MinimiseAndRestore(search);
    search->close();

    Minimise(
        u"frmIni"_s, [](QWidget *dialog) { Enter(dialog, u"txtTextEditor"_s, u"x.exe"_s); }, Cancel);
    Child<QPushButton>(u"cmdIni")->click();
    Minimise(
        u"frmPicture"_s, [](QWidget *) {}, Close);
    Click(Qt::LeftButton, 10, 1);
    Minimise(
        u"frmMsg"_s, [](QWidget *dialog) { dialog->findChild<QWidget *>(u"cmdCancel"_s)->setFocus(); }, Cancel);
    EXPECT_EQ(msg.DispFrmMsg(window.get(), u"a"_s, MsgStyle::YesNo, QString()), MsgResult::Cancel);
    EXPECT_EQ(minimised, QStringList({u"frmLogin"_s, u"frmTable"_s, u"frmWrite"_s, u"frmFile"_s, u"frmExport"_s,
                                      u"frmPrint"_s, u"frmIni"_s, u"frmPicture"_s, u"frmMsg"_s}));
}
