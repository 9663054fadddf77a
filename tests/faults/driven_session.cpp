// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Runs the program's own windows with simulated input, for tests that kill it, limit its resources or watch its memory.
//
//     driven_session APPLICATION_FOLDER start            starts, prints "runs" or its message, waits for end of input
//     driven_session APPLICATION_FOLDER actions COUNT    performs COUNT actions and prints how the memory has grown
//     driven_session APPLICATION_FOLDER study USER DAY INTERIM
//                             studies until it is killed; DAY counts days from a fixed date, and INTERIM is how many
//                             seconds of the simulated clock pass before the session under way is saved
//     driven_session APPLICATION_FOLDER end WORK         studies the first file, begins some work on it, on the
//                             second file, on a table or with dropped files
//                             (Print, Export, Copy, Convert, Table, Take), and is asked to end by a signal meanwhile;
//                             exits with 1 if the work was done before
//
// "study" prints what must have been saved by then, one line each:
//
//     user NAME                       the name is in the user list
//     answers SESSION COUNT SECONDS   answers so far in a session, counted from 1, and the time
//     marking, leaving                marks, or marks and a place, are about to be written
//     completed SESSION TITLE MARKS   the session is complete, with the number of marks in its file
#include "app/frmLogin.h"
#include "app/modMain.h"
#include "base/modFile.h"
#include "page/picText.h"
#include "platform/modEndSignal.h"
#include "support/DropFiles.h"
#include "support/RecordingServices.h"
#include "view/frmText.h"
#include "widgets/InputGuard.h"
#include "widgets/frmMsg.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTimer>

#include <csignal>
#include <cstdio>
#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__)
extern "C" size_t __sanitizer_get_current_allocated_bytes(); // from the sanitizer's runtime library
#endif

using namespace Qt::Literals::StringLiterals;

namespace {

void Say(const QString &text)
{
    // Directly to the pipe, because buffered output is lost when the process is killed.
    const QByteArray line = text.toUtf8() + '\n';
    [[maybe_unused]] const ssize_t written = write(STDOUT_FILENO, line.constData(), size_t(line.size()));
}

qint64 HeapBytes()
{
#if defined(__SANITIZE_ADDRESS__)
    return qint64(__sanitizer_get_current_allocated_bytes());
#else
    return qint64(mallinfo2().uordblks);
#endif
}

/// Silent services whose clock advances by a second per call, so that no two sessions begin at the same time.
class FaultServices : public RecordingServices
{
  public:
    using RecordingServices::ShowMessage;
    void ShowMessage(const QString &text) override
    {
        Say(u"message "_s + text.simplified());
    }
    void PlaySoundFile(const QString &) override {} // recording thousands of them would look like a leak
    QDateTime Now() const override
    {
        return m_next = m_next.isValid() ? m_next.addSecs(1) : now;
    }
    QDateTime LastTold() const
    {
        return m_next;
    }

  private:
    mutable QDateTime m_next;
};

/// Performs the next action whenever the windows wait for input.
class SimulatedUser : public QObject
{
  public:
    SimulatedUser(const QString &name, const FaultServices &services) : m_name(name), m_services(services) {}

    std::function<void(int)> onAction = [](int) {}; ///< called with the number of each action in the study window
    frmText *study = nullptr;                       ///< the study window, once it exists

    /// Answers every window from now on.
    void Step()
    {
        // First, so that the steps continue while an action waits in a dialog.
        QTimer::singleShot(0, this, &SimulatedUser::Step);
        if (QWidget *const dialog = QApplication::activeModalWidget())
            AnswerDialog(dialog);
        else if (study && study->isVisible() && !m_isBusy)
            Study();
    }

  private:
    void Click(QWidget *parent, const char16_t *name)
    {
        if (auto *const button = parent->findChild<QPushButton *>(QString::fromUtf16(name)); button->isEnabled())
            button->click();
    }

    void AnswerDialog(QWidget *dialog)
    {
        const QString name = dialog->objectName();
        if (name == u"frmMsg") {
            Click(dialog, u"cmdOK");
        } else if (name == u"frmLogin") {
            dialog->findChild<QLineEdit *>(u"txtUserName"_s)->setText(m_name);
            Click(dialog, u"cmdOK");
        } else if (name == u"frmIni") {
            dialog->findChild<QLineEdit *>(u"txtLineSpace"_s)->setText(QString::number(4 + m_count % 3));
            Click(dialog, u"cmdChangeSetting");
        } else if (name == u"frmFile") {
            ChooseFile(dialog);
        } else {
            dialog->close();
        }
    }

    // The previous session was recorded when this window opened; its marks and place are saved once it is painted.
    void ChooseFile(QWidget *dialog)
    {
        auto *const list = dialog->findChild<QListView *>(u"lstFile"_s);
        const auto select = [list](const QString &name) { // a row above the files comes with the first mark
            list->setCurrentIndex(list->model()->match(list->model()->index(0, 0), Qt::DisplayRole, name).value(0));
        };
        if (m_fileStep > 0 && dialog->findChild<QTimer *>(u"tmrSave"_s)->isActive())
            return;
        switch (m_fileStep++) {
        case 0:
            dialog->repaint();
            break;
        case 1:
            if (m_sessions > 0)
                Say(u"completed %1 %2 %3"_s.arg(m_sessions)
                        .arg(LabelText(u"lblFile").section(u'.', 0, 0))
                        .arg(study->findChild<QCheckBox *>(u"chkOnlyHard"_s)
                                 ->accessibleName()
                                 .section(u' ', 1)
                                 .toInt()));
            select(u"a.txt"_s);
            dialog->findChild<QAction *>(u"cmdConvFile"_s)->trigger();
            break;
        case 2:
            Click(dialog, u"cmdFile");
            break;
        default:
            m_fileStep = 0;
            select(m_sessions % 2 == 0 ? u"a.txt"_s : u"b.txt"_s);
            ++m_sessions;
            Click(dialog, u"cmdSelect");
        }
    }

    void Study()
    {
        m_isBusy = true;
        auto *const page = study->findChild<PicText *>(u"picText"_s);
        onAction(++m_count);
        if (study->isHidden())
            return; // that was the last action
        if (m_count % 50 == 0) {
            Say(u"leaving"_s);
            Click(study, u"cmdFile");
        } else if (m_count % 31 == 0)
            Click(study, u"cmdIni");
        else if (m_count % 17 == 0)
            Click(study, u"cmdReRead");
        else if (m_count % 97 == 0)
            Click(study, u"cmdSearch");
        else if (m_count % 7 == 0)
            QTest::keyClick(page, m_count % 3 == 0 ? Qt::Key_Space : Qt::Key_Right, Qt::ControlModifier);
        else if (m_count % 5 == 0)
            QTest::mouseClick(page, m_count % 3 == 0 ? Qt::RightButton : Qt::LeftButton, {},
                              QPoint(m_count * 37 % page->width(), m_count * 53 % page->height()));
        else if (m_count % 13 == 0) {
            Say(u"marking"_s);
            QTest::keyClick(page, Qt::Key_M, Qt::ControlModifier);
        } else
            QTest::keyClick(page, Qt::Key_Return);
        study->Timer1_Timer();
        Say(u"answers %1 %2 %3"_s.arg(m_sessions)
                .arg(LabelText(u"lblNum"))
                .arg(m_services.LastTold().toSecsSinceEpoch()));
        m_isBusy = false;
    }

    QString LabelText(const char16_t *name) const
    {
        return study->findChild<QLabel *>(QString::fromUtf16(name))->text();
    }

    QString m_name;
    const FaultServices &m_services;
    bool m_isBusy = false;
    int m_sessions = 0;
    int m_fileStep = 0;
    int m_count = 0;
};

/// Begins some work when the windows wait for input, and sends the signal while the program says that it takes time.
class EndedUser : public QObject
{
  public:
    EndedUser(frmText &study, const QString &folder, const QString &work)
        : m_study(study), m_folder(folder), m_work(work)
    {
    }

    void Step()
    {
        QWidget *const dialog = QApplication::activeModalWidget();
        if (dialog && dialog->objectName() == u"frmWait") {
            std::raise(SIGTERM);
            return; // leaves all windows to the program
        }
        QTimer::singleShot(0, this, &EndedUser::Step);
        if (!dialog)
            Study();
        else if (dialog->objectName() != u"frmFile")
            Agree(dialog);
        else if (!m_hasChosen)
            ChooseFile(dialog);
        else if (m_hasBegun)
            QApplication::exit(1);
    }

  private:
    static void Agree(QWidget *dialog)
    {
        if (auto *const csv = dialog->findChild<QAbstractButton *>(u"optCsv"_s))
            csv->click();
        if (auto *const button = dialog->findChild<QPushButton *>(u"cmdOK"_s); button->isEnabled())
            button->click();
    }

    void ChooseFile(QWidget *dialog)
    {
        auto *const list = dialog->findChild<QListView *>(u"lstFile"_s);
        list->setCurrentIndex(list->model()->index(m_work == u"Convert" && m_hasStudied ? 1 : 0, 0));
        if (!m_hasStudied) {
            dialog->findChild<QPushButton *>(u"cmdSelect"_s)->click();
            return;
        }
        m_hasChosen = true;
        QTimer::singleShot(0, this, [this] { m_hasBegun = true; }); // after what a drop has put off
        auto *const mend = dialog->findChild<QPushButton *>(u"cmdMend"_s);
        if (m_work == u"Table") {
            DropFiles({m_folder + u"/table.csv"_s}, dialog);
        } else if (m_work == u"Take") {
            const QDir dropped(m_folder + u"/many"_s);
            QStringList paths;
            for (const QString &name : dropped.entryList(QDir::Files))
                paths += dropped.filePath(name);
            DropFiles(paths, dialog);
        } else if (m_work == u"Copy") {
            dialog->findChild<QAction *>(u"cmdConvFile"_s)->trigger();
        } else {
            mend->click(); // without waiting for the list to check the file
        }
    }

    void Study()
    {
        if (m_hasBegun) {
            QApplication::exit(1);
            return;
        }
        if (m_study.findChild<QLabel *>(u"lblNum"_s)->text().toInt() == 0) { // not open yet, or ignoring keys
            QTest::keyClick(m_study.findChild<PicText *>(u"picText"_s), Qt::Key_Return);
            return;
        }
        m_hasStudied = true;
        m_hasBegun = m_work == u"Print" || m_work == u"Export";
        if (m_hasBegun)
            QTest::keyClick(&m_study, m_work == u"Print" ? Qt::Key_P : Qt::Key_E, Qt::ControlModifier);
        else
            m_study.findChild<QPushButton *>(u"cmdFile"_s)->click();
    }

    frmText &m_study;
    QString m_folder;
    QString m_work;
    bool m_hasStudied = false;
    bool m_hasChosen = false; // what to work on in the file selection
    bool m_hasBegun = false;
};

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    const QString folder = arguments.value(1);
    const QString mode = arguments.value(2);
    const QString user = mode == u"study" ? arguments.value(3) : u"user"_s;
    FaultServices services;
    services.now = QDateTime(QDate(2024, 1, 1).addDays(arguments.value(4).toInt()), QTime(6, 0));
    const InstanceMark instance(folder);
    const RunLog log(folder, u"Kotoban"_s, services.Clock());
    StudyDatabase database(services);
    if (!PrepareRun(folder, instance, log, services, database))
        return 1;
    if (mode == u"start") {
        Say(u"runs"_s);
        std::getchar();
        return 0;
    }

    frmMsg msg(services, JoinPath(folder, u"wav"_s));
    msg.findChild<QTimer *>(u"Timer1"_s)->setInterval(0);
    {
        frmLogin login(services, msg, JoinPath(folder, u"ListUserName.txt"_s), QString());
        SimulatedUser simulatedUser(user, services);
        simulatedUser.Step();
        login.Ask();
    }
    Say(u"user "_s + user);
    CompleteDatabase(folder, services, database);
    InputGuard inputGuard;
    frmText study(services, database, log, msg, inputGuard,
                  {folder, JoinPath(folder, u"Kotoban.ini"_s), user,
                   mode == u"study" ? arguments.value(5).toInt() : InterimSeconds});
    study.findChild<QTimer *>(u"tmrKeep"_s)->setInterval(0);
    QObject::connect(&study, &frmText::Ended, &application, [] { QApplication::exit(0); });
    if (mode == u"end") {
        const EndSignal endSignal;
        QObject::connect(&endSignal, &EndSignal::Asked, &application, [] { QApplication::exit(0); });
        QObject::connect(&endSignal, &EndSignal::Asked, &study, &frmText::close);
        study.show();
        EndedUser endedUser(study, folder, arguments.value(3));
        QTimer::singleShot(0, &endedUser, &EndedUser::Step);
        return QApplication::exec();
    }
    SimulatedUser simulatedUser(user, services);
    simulatedUser.Step();
    qint64 heapAtFirst = 0;
    if (mode == u"actions") {
        // Few more than are open already, so that leaked file descriptors soon make something fail.
        const rlimit few{rlim_t(QDir(u"/proc/self/fd"_s).entryList().size() + 16), 1024};
        setrlimit(RLIMIT_NOFILE, &few);
        simulatedUser.onAction = [&, last = arguments.value(3).toInt()](int count) {
            if (count == 100)
                heapAtFirst = HeapBytes();
            else if (count == last)
                study.close();
        };
    }
    study.show();
    simulatedUser.study = &study;
    QApplication::exec();
    Say(u"grown by %1 %"_s.arg(100.0 * double(HeapBytes() - heapAtFirst) / double(heapAtFirst), 0, 'f', 2));
    return 0;
}
