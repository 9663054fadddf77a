// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Fixture: the study window with a folder of study files, operated the way a user does.
#pragma once

#include "files/StudyFileModel.h"
#include "page/picText.h"
#include "study/modPageText.h"
#include "support/WindowTest.h"
#include "view/frmText.h"

#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

class StudyWindowTest : public WindowTest
{
  protected:
    StudyWindowTest()
    {
        folder.MakeFolder(u"txt"_s);
        EXPECT_EQ(database.Open(folder.Path(u"k.splite3"_s)), 0);
        EXPECT_TRUE(database.SQLite3NonQuery(u"create table t_kotoban (ymd_sta text, user_name text, hms_sta text, "
                                             u"file_name text, dt_end text, num_answer integer)"_s));
    }

    /// Scripts the choice of the n-th file of the list, 1-based, or of the note of hard words, 0.
    void ChooseFile(int n)
    {
        script.When(u"frmFile"_s, [n](QWidget *dialog) {
            auto *const list = dialog->findChild<QListView *>(u"lstFile"_s);
            const bool hasNote = list->model()->index(0, 0).data(StudyFileModel::NoteRole).toBool();
            list->setCurrentIndex(list->model()->index(n - (hasNote ? 0 : 1), 0));
            dialog->findChild<QPushButton *>(u"cmdSelect"_s)->click();
        });
    }

    /// Opens the window, which immediately asks for a file.
    void Open()
    {
        window = std::make_unique<frmText>(services, database, log, msg, inputGuard,
                                           StudyContext{folder.Path(), folder.Path(u"Kotoban.ini"_s), u"花子"_s});
        window->show();
        EXPECT_TRUE(WaitFor([this] { return script.IsDone() && !QApplication::activeModalWidget(); }));
        TakeKeys();
        page = Child<PicText>(u"picText");
        scroll = Child<QScrollBar>(u"VScroll");
    }

    /// Makes the window accept keys after another one was open.
    void TakeKeys()
    {
        window->activateWindow();
        EXPECT_TRUE(WaitFor([this] { return QApplication::activeWindow() == window.get(); }));
        QCoreApplication::processEvents(); // only then
    }

    void OpenWith(const QStringList &lines)
    {
        folder.WriteStudyFile(u"txt/a.txt"_s, lines);
        ChooseFile(1);
        Open();
    }

    template <typename Widget>
    Widget *Child(const char16_t *name)
    {
        return window->findChild<Widget *>(QString::fromUtf16(name));
    }

    QString Label(const char16_t *name)
    {
        const auto *const label = Child<QLabel>(name);
        return label->isHidden() ? u"(hidden)"_s : label->text();
    }

    /// The answers shown of all, e.g. "1 / 3".
    QString Shown()
    {
        return Label(u"lblShown") + Label(u"lblBlanks");
    }

    void Press(Qt::Key key, int times = 1)
    {
        for (int i = 0; i < times; ++i)
            QTest::keyClick(page, key);
    }

    void PressCtrl(Qt::Key key, Qt::KeyboardModifiers more = {})
    {
        QTest::keyClick(page, key, Qt::ControlModifier | more);
    }

    void Click(Qt::MouseButton button, int cell, int row)
    {
        const PageLayout &layout = page->Layout();
        QTest::mouseClick(page, button, {},
                          QPoint(layout.TextLeftPx() + cell * layout.cellWidthPx + 3, layout.RowTopPx(row) + 5));
    }

    /// The page as it is on the screen, painted incrementally, not rendered again.
    QImage OnScreen()
    {
        QCoreApplication::sendPostedEvents(); // performs pending repaints
        const QImage image = window->screen()->grabWindow(window->winId()).toImage();
        EXPECT_FALSE(image.isNull());
        const double scale = window->devicePixelRatioF();
        const QRect area(page->mapTo(window.get(), QPoint()), page->size());
        return image.copy(QRectF(QPointF(area.topLeft()) * scale, QSizeF(area.size()) * scale).toRect());
    }

    /// The records, one row per session.
    QStringList Sessions()
    {
        ResultTable table;
        database.SQLite3Query(u"select * from t_kotoban"_s, &table);
        return QStringList(table.begin() + 1, table.end());
    }

    StudyDatabase database{services};
    RunLog log{folder.Path(), u"Kotoban"_s, services.Clock()};
    std::unique_ptr<frmText> window;
    PicText *page = nullptr;
    QScrollBar *scroll = nullptr;
};
