// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The keys of the windows and those in the tables of the help are the same.
#include "app/frmLogin.h"
#include "files/frmFile.h"
#include "view/StudyWindowTest.h"
#include "widgets/HelpKey.h"
#include "write/frmWrite.h"

#include <QAction>
#include <QRegularExpression>
#include <QShortcut>
#include <QTabBar>

#include <gtest/gtest.h>

namespace {

/// Names of keys with Ctrl or Alt, and of function keys. All others belong to single controls.
class KeyNames
{
  public:
    void Add(const QKeySequence &keys)
    {
        const QString name = keys.toString();
        static const QRegularExpression ofWindow(u"Ctrl\\+|Alt\\+|F[0-9]"_s);
        if (name.contains(ofWindow) && !m_names.contains(name))
            m_names += name;
    }

    /// Adds the shortcuts and mnemonics of a window; of several keys for one action, the first.
    void AddThoseOf(const QWidget *window)
    {
        const auto isOfWindow = [window](const QObject *object) {
            const auto *const owner = qobject_cast<const QWidget *>(object->parent());
            return owner && owner->window() == window;
        };
        for (const auto *const shortcut : window->findChildren<QShortcut *>())
            if (isOfWindow(shortcut))
                Add(shortcut->key());
        for (const auto *const action : window->findChildren<QAction *>())
            if (isOfWindow(action))
                Add(action->shortcut());
        for (const auto *const button : window->findChildren<QAbstractButton *>())
            if (isOfWindow(button))
                Add(button->shortcut());
        for (const auto *const tabs : window->findChildren<QTabBar *>())
            for (int tab = 0; isOfWindow(tabs) && tab < tabs->count(); ++tab)
                Add(QKeySequence::mnemonic(tabs->tabText(tab)));
        for (const auto *const label : window->findChildren<QLabel *>())
            if (isOfWindow(label) && label->buddy())
                Add(QKeySequence::mnemonic(label->text()));
    }

    /// Adds the keys in the tables of a page of the help, such as <kbd>Alt</kbd>+<kbd>D</kbd>，<kbd>K</kbd>.
    void AddThoseOfHelp(const QString &page)
    {
        QFile file(QStringLiteral(HELP_FOLDER) + u'/' + page);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QString html = QString::fromUtf8(file.readAll());
        const QHash<QString, QString> keys = {
            {u"←"_s, u"Left"_s},          {u"→"_s, u"Right"_s},        {u"↑"_s, u"Up"_s},
            {u"↓"_s, u"Down"_s},          {u"スペース"_s, u"Space"_s}, {u"PageUp"_s, u"PgUp"_s},
            {u"PageDown"_s, u"PgDown"_s},
        };
        const QRegularExpression row(u"<tr>.*?</tr>"_s, QRegularExpression::DotMatchesEverythingOption);
        const QRegularExpression key(u"(，?)((?:<kbd>(?:Ctrl|Shift|Alt)</kbd>\\+)*)<kbd>([^<]+)</kbd>(?!\\+)"_s);
        for (const QRegularExpressionMatch &line : row.globalMatch(html)) {
            QString held;
            for (const QRegularExpressionMatch &match : key.globalMatch(line.captured())) {
                if (match.captured(1).isEmpty() || !match.captured(2).isEmpty())
                    held = match.captured(2).remove(u"<kbd>"_s).remove(u"</kbd>"_s);
                Add(QKeySequence(held + keys.value(match.captured(3), match.captured(3))));
            }
        }
    }

    std::string Sorted()
    {
        m_names.sort();
        return m_names.join(u'\n').toStdString();
    }

  private:
    QStringList m_names;
};

} // namespace

TEST_F(StudyWindowTest, Shortcuts_StandInTheHelpAndNoOthers)
{
    OpenWith({u"[x]"_s});
    KeyNames bound;
    bound.AddThoseOf(window.get());
    bound.Add(Qt::ALT | Qt::Key_F4); // by the desktop
    KeyNames inHelp;
    inHelp.AddThoseOfHelp(u"study.htm"_s);
    EXPECT_EQ(bound.Sorted(), inHelp.Sorted());
}

TEST_F(StudyWindowTest, ShortcutsBeforeStudying_StandInTheHelpAndNoOthers)
{
    const frmLogin login(services, msg, folder.Path(u"ListUserName.txt"_s), QString());
    const SettingsFile settings(folder.Path(u"Kotoban.ini"_s));
    const frmFile file(services, database, msg, settings, folder.Path(), u"花子"_s, nullptr);
    KeyNames bound;
    bound.AddThoseOf(&login);
    bound.AddThoseOf(&file);
    bound.Add(Qt::Key_F1); // by HelpKey
    KeyNames inHelp;
    inHelp.AddThoseOfHelp(u"index.htm"_s);
    EXPECT_EQ(bound.Sorted(), inHelp.Sorted());
}

TEST_F(StudyWindowTest, F1_OpensThePageOfEachWindow)
{
    for (const QString &name : QDir(QStringLiteral(HELP_FOLDER)).entryList({u"*.htm"_s}))
        folder.Write(u"htm/"_s + name, "x");
    const HelpKey helpKey(services, folder.Path());
    const auto press = [this](QWidget *focused) {
        services.opened.clear();
        QTest::keyClick(focused, Qt::Key_F1);
        return services.opened.size() == 1 ? QFileInfo(services.opened.front()).fileName() : u"none"_s;
    };
    frmLogin login(services, msg, folder.Path(u"ListUserName.txt"_s), QString());
    EXPECT_EQ(press(&login), u"index.htm"_s);
    const SettingsFile settings(folder.Path(u"Kotoban.ini"_s));
    folder.WriteStudyFile(u"txt/a.txt"_s, {u"[x]"_s});
    frmFile file(services, database, msg, settings, folder.Path(), u"花子"_s, nullptr);
    script.When(u"frmFile"_s, [&press](QWidget *dialog) {
        EXPECT_EQ(press(dialog->findChild<QWidget *>(u"lstFile"_s)), u"files.htm"_s);
        EXPECT_EQ(press(dialog->findChild<QWidget *>(u"txtYmd"_s)), u"history.htm"_s);
        DialogScript::Press(dialog, u"cmdPrint"_s);
    });
    const auto closeAfter = [this, &press](const QString &dialogName, const QString &wanted) {
        script.When(dialogName, [&press, wanted](QWidget *dialog) {
            EXPECT_EQ(press(dialog), wanted);
            dialog->close();
        });
    };
    closeAfter(u"frmPrint"_s, u"teachers.htm"_s);
    script.When(u"frmFile"_s, [](QWidget *dialog) { DialogScript::Press(dialog, u"cmdExport"_s); });
    closeAfter(u"frmExport"_s, u"teachers.htm"_s);
    script.When(u"frmFile"_s, [](QWidget *dialog) { dialog->close(); });
    file.Choose(QString());

    OpenWith({u"[x]"_s});
    EXPECT_EQ(press(page), u"index.htm"_s);
    closeAfter(u"frmWrite"_s, u"write.htm"_s);
    frmWrite(services, msg, DefaultSettings(), folder.Path(), nullptr).WriteNew();
    closeAfter(u"frmIni"_s, u"settings.htm"_s);
    Child<QPushButton>(u"cmdIni")->click();
    Child<QPushButton>(u"cmdSearch")->click();
    auto *const search = Child<QWidget>(u"frmSearch");
    EXPECT_TRUE(WaitFor([search] { return search->isActiveWindow(); }));
    EXPECT_EQ(press(search), u"settings.htm"_s);
    script.When(u"frmMsg"_s, [&press](QWidget *dialog) {
        EXPECT_EQ(press(dialog), u"index.htm"_s) << "that of its owner";
        dialog->close();
    });
    msg.Refuse(window.get(), u"x"_s);
}

TEST_F(StudyWindowTest, ShortcutsWhileWriting_StandInTheHelpAndNoOthers)
{
    const frmWrite write(services, msg, DefaultSettings(), folder.Path(), nullptr);
    KeyNames bound;
    bound.AddThoseOf(&write);
    KeyNames inHelp;
    inHelp.AddThoseOfHelp(u"write.htm"_s);
    EXPECT_EQ(bound.Sorted(), inHelp.Sorted());
}
