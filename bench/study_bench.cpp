// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Benchmarks of parts of the program, each giving the CPU time of one step. Key presses, clicks and repaints are timed
// in the study window itself, with a short file and with one of a million lines.
//
//     STUDY_BENCH_INPUTS=FOLDER study_bench [options of Google Benchmark]
//
// FOLDER is one filled by bench_inputs.
#include "Inputs.h"
#include "Steps.h"
#include "page/picText.h"
#include "settings/modSettings.h"
#include "settings/modZoom.h"
#include "support/RecordingServices.h"
#include "support/TestFiles.h"
#include "text/modCharCode.h"
#include "view/frmText.h"
#include "widgets/CursorRest.h"
#include "widgets/InputGuard.h"
#include "widgets/PageFont.h"
#include "widgets/frmMsg.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QCheckBox>
#include <QEventLoop>
#include <QListView>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include <benchmark/benchmark.h>
#include <cmath>
#include <cstring>
#include <memory>

using namespace Qt::Literals::StringLiterals;

namespace {

void LoadFile(benchmark::State &state)
{
    Steps steps(state, 1);
    for (auto step : steps)
        benchmark::DoNotOptimize(LoadText(StudyFilePath(state.range(0))).Blanks().Count());
}
BENCHMARK(LoadFile)->Arg(1'000)->Arg(30'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

void DetectAscii(benchmark::State &state)
{
    const QByteArray bytes = BytesOf(InputPath(u"ascii.txt"_s));
    Steps steps(state, 1);
    for (auto step : steps)
        benchmark::DoNotOptimize(DetectCharCode(bytes));
    state.SetBytesProcessed(state.iterations() * bytes.size());
}
BENCHMARK(DetectAscii)->Unit(benchmark::kMillisecond);

void MemchrAscii(benchmark::State &state)
{
    const QByteArray bytes = BytesOf(InputPath(u"ascii.txt"_s));
    Steps steps(state, 1);
    for (auto step : steps)
        benchmark::DoNotOptimize(std::memchr(bytes.data(), 0x80, size_t(bytes.size())));
    state.SetBytesProcessed(state.iterations() * bytes.size());
}
BENCHMARK(MemchrAscii)->Unit(benchmark::kMillisecond);

/// How lines are to the window: all fit, or many are wider, at 200 %, in which case the page moves sideways or they
/// wrap.
enum class Lines
{
    Fit,
    Sideways,
    Wrapped
};

/// The study window with an open file, as a user sees it.
class OpenStudy
{
  public:
    explicit OpenStudy(qint64 lines, Lines width = Lines::Fit)
    {
        if (width == Lines::Sideways)
            folder.Write(u"Kotoban.ini"_s, "[setting]\r\nWrap=False\r\n");
        folder.MakeFolder(u"txt"_s);
        QFile::link(StepFilePath(lines), folder.Path(u"txt/study.txt"_s));
        database.Open(u":memory:"_s);
        database.SQLite3NonQuery(u"create table t_kotoban (ymd_sta text, user_name text, hms_sta text, file_name text, "
                                 u"dt_end text, num_answer integer)"_s);
        QTimer chooser;
        QObject::connect(&chooser, &QTimer::timeout, [] {
            QWidget *const dialog = QApplication::activeModalWidget();
            if (!dialog)
                return;
            auto *const list = dialog->findChild<QListView *>(u"lstFile"_s);
            list->setCurrentIndex(list->model()->index(0, 0));
            dialog->findChild<QPushButton *>(u"cmdSelect"_s)->click();
        });
        chooser.start(20);
        window.show();
        page = window.findChild<PicText *>(u"picText"_s);
        scroll = window.findChild<QScrollBar *>(u"VScroll"_s);
        while (scroll->maximum() != lines)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::processEvents();
        if (width != Lines::Fit) {
            TurnWheel(4, Qt::ControlModifier);
            window.resize(500, 800);
            QCoreApplication::processEvents();
            if (page->Page().InView().isWrapped != (width == Lines::Wrapped))
                qFatal("the window has the wrong width");
        }
        middle = int(lines / 2 / 1'000 * 1'000 + 500); // the same text in every file
        StartInTheMiddle();
    }

    void PressEnter()
    {
        Send(QKeyEvent(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier));
    }

    void PressCtrl(Qt::Key key)
    {
        QTest::keyClick(page, key, Qt::ControlModifier);
        QCoreApplication::processEvents();
    }

    /// Shows the page in the middle of the file, with all answers hidden.
    void StartInTheMiddle()
    {
        scroll->setValue(middle);
        Send(QMouseEvent(QEvent::MouseButtonPress, QPointF(), QPointF(), Qt::RightButton, Qt::RightButton,
                         Qt::NoModifier));
    }

    /// Turns the wheel by some notches, away from the user, and lets the window paint.
    void TurnWheel(int notches, Qt::KeyboardModifiers modifiers = {})
    {
        Send(QWheelEvent(QPointF(50, 50), QPointF(50, 50), QPoint(), QPoint(0, 120 * notches), Qt::NoButton, modifiers,
                         Qt::NoScrollPhase, false));
    }

    /// Sends the page an event and lets the window paint the result.
    void Send(QEvent &&event)
    {
        QCoreApplication::sendEvent(page, &event);
        QCoreApplication::processEvents();
    }

    TestFolder folder;
    RecordingServices services;
    StudyDatabase database{services};
    RunLog log{folder.Path(), u"Kotoban"_s, services.Clock()};
    frmMsg msg{services, u"wav"_s};
    InputGuard inputGuard;
    frmText window{services, database, log, msg, inputGuard, {folder.Path(), folder.Path(u"Kotoban.ini"_s), u"user"_s}};
    PicText *page = nullptr;
    QScrollBar *scroll = nullptr;
    int middle = 0;
};

/// Shows an answer.
template <Lines width>
void PressEnter(benchmark::State &state)
{
    OpenStudy study(state.range(0), width);
    const DisplayText text = LoadText(StepFilePath(state.range(0)));
    const int onPage = VisibleBlanks(text, PageAt(study.middle, text, study.page->Layout())).size();
    int pressed = 0;
    Steps steps(state);
    for (auto step : steps) {
        study.PressEnter();
        if (++pressed % onPage == 0) { // before the page turns
            steps.Pause();
            study.StartInTheMiddle();
            steps.Resume();
        }
    }
}

void Click(benchmark::State &state)
{
    OpenStudy study(state.range(0));
    // There is a blank somewhere in the upper rows; its column does not matter.
    const PageLayout &layout = study.page->Layout();
    QPointF at;
    for (int row = 1; study.page->cursor().shape() != Qt::PointingHandCursor; ++row)
        for (int x = layout.TextLeftPx(); x < study.page->width(); x += layout.cellWidthPx) {
            at = QPointF(x, layout.RowTopPx(row) + 3);
            study.Send(QMouseEvent(QEvent::MouseMove, at, at, Qt::NoButton, Qt::NoButton, Qt::NoModifier));
            if (study.page->cursor().shape() == Qt::PointingHandCursor)
                break;
        }
    Steps steps(state);
    for (auto step : steps)
        study.Send(QMouseEvent(QEvent::MouseButtonPress, at, at, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier));
}

/// Presses Enter when no answer on the page is hidden.
template <Lines width>
void TurnPage(benchmark::State &state)
{
    OpenStudy study(state.range(0), width);
    const DisplayText text = LoadText(StepFilePath(state.range(0)));
    const PageLayout &layout = study.page->Layout();
    Steps steps(state);
    for (auto step : steps) {
        steps.Pause();
        study.StartInTheMiddle();
        for ([[maybe_unused]] const int blank : VisibleBlanks(text, PageAt(study.middle, text, layout)))
            study.PressEnter();
        steps.Resume();
        study.PressEnter();
        if (study.scroll->value() == study.middle)
            qFatal("the page did not turn");
    }
}

/// Marks an answer as hard, and removes the mark the next time.
void MarkHard(benchmark::State &state)
{
    OpenStudy study(state.range(0));
    study.PressEnter();
    Steps steps(state);
    for (auto step : steps)
        study.PressCtrl(Qt::Key_M);
}

/// Studies only hard blanks, shows one, goes to the next, half the file away, and studies all again.
void StudyHard(benchmark::State &state)
{
    OpenStudy study(state.range(0));
    study.window.findChild<QTimer *>(u"tmrKeep"_s)->setInterval(0); // the marks are saved before the first step
    for (const int line : {study.middle, 1}) {
        study.scroll->setValue(line);
        study.PressEnter();
        study.PressCtrl(Qt::Key_M);
    }
    auto *const onlyHard = study.window.findChild<QCheckBox *>(u"chkOnlyHard"_s);
    Steps steps(state);
    for (auto step : steps) {
        onlyHard->click();
        study.PressEnter();
        study.PressEnter();
        onlyHard->click();
    }
}

/// Hides all answers and undoes that.
void HideAndUndo(benchmark::State &state)
{
    OpenStudy study(state.range(0));
    study.PressEnter();
    Steps steps(state);
    for (auto step : steps) {
        study.PressCtrl(Qt::Key_H);
        study.PressCtrl(Qt::Key_Z);
    }
}

template <Lines width>
void TurnWheel(benchmark::State &state)
{
    OpenStudy study(state.range(0), width);
    Steps steps(state);
    for (auto step : steps) {
        if (study.scroll->value() == study.scroll->maximum())
            study.scroll->setValue(1);
        study.TurnWheel(-1);
    }
}

template <Lines width>
void Zoom(benchmark::State &state)
{
    OpenStudy study(state.range(0), width);
    study.PressCtrl(Qt::Key_0);
    const int oneWay = int(ZoomSteps.size()) - 1;
    int step = 0;
    Steps steps(state);
    for (auto measured : steps)
        study.TurnWheel(step++ / oneWay % 2 == 0 ? 1 : -1, Qt::ControlModifier);
}

void ScrollSideways(benchmark::State &state)
{
    OpenStudy study(state.range(0), Lines::Sideways);
    study.window.resize(800, 800);
    study.TurnWheel(int(ZoomSteps.size()), Qt::ControlModifier);
    auto *const sideways = study.window.findChild<QScrollBar *>(u"HScroll"_s);
    if (sideways->maximum() == 0)
        qFatal("the page cannot be scrolled sideways");
    Steps steps(state);
    for (auto step : steps)
        study.TurnWheel(sideways->value() == 0 ? -1 : 1, Qt::ShiftModifier);
}

void Repaint(benchmark::State &state)
{
    OpenStudy study(state.range(0));
    // Pages all over the file, because some have more text than others.
    const int stride = study.scroll->maximum() / 20 / 1'000 * 1'000 + 50; // the same text in every file
    Steps steps(state);
    for (auto step : steps) {
        steps.Pause();
        study.scroll->setValue(1 + (study.scroll->value() + stride) % (study.scroll->maximum() - stride));
        QCoreApplication::processEvents();
        steps.Resume();
        study.page->repaint();
    }
}

/// Scrolls to the next page with the keyboard.
void PageDown(benchmark::State &state)
{
    OpenStudy study(state.range(0));
    Steps steps(state);
    for (auto step : steps) {
        if (study.scroll->value() > study.scroll->maximum() - 100)
            study.scroll->setValue(1);
        study.PressCtrl(Qt::Key_PageDown);
    }
}

/// Qt's own widget for long plain texts, with the text of a study file in the font and size of its page.
class PlainText
{
  public:
    explicit PlainText(qint64 lines)
    {
        const DisplayText text = LoadText(StudyFilePath(lines));
        QString content;
        for (int line = 1; line <= text.LineCount(); ++line)
            content += text.Line(line).toString() + u'\n';
        OpenStudy study(1'000);
        const Settings settings;
        QFont font = PageFont();
        font.setPixelSize(int(std::lround(double(settings.FontSize) * study.page->logicalDpiY() / 72)));
        edit.setFrameStyle(QFrame::NoFrame);
        edit.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
        edit.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        edit.setLineWrapMode(QPlainTextEdit::NoWrap);
        edit.setFont(font);
        edit.setPlainText(content);
        edit.resize(study.page->size());
        edit.show();
        QCoreApplication::processEvents();
    }

    QPlainTextEdit edit;
};

void RepaintPlainText(benchmark::State &state)
{
    PlainText text(state.range(0));
    QScrollBar *const scroll = text.edit.verticalScrollBar();
    const int stride = scroll->maximum() / 20;
    Steps steps(state);
    for (auto step : steps) {
        steps.Pause();
        scroll->setValue(1 + (scroll->value() + stride) % (scroll->maximum() - stride));
        QCoreApplication::processEvents();
        steps.Resume();
        text.edit.viewport()->repaint();
    }
}

void PageDownPlainText(benchmark::State &state)
{
    PlainText text(state.range(0));
    Steps steps(state);
    for (auto step : steps) {
        if (text.edit.verticalScrollBar()->value() > text.edit.verticalScrollBar()->maximum() - 100)
            text.edit.moveCursor(QTextCursor::Start);
        QKeyEvent key(QEvent::KeyPress, Qt::Key_PageDown, Qt::NoModifier);
        QCoreApplication::sendEvent(&text.edit, &key);
        QCoreApplication::processEvents();
    }
}

/// From the end of the login to a painted page, without the time a user takes to choose the file.
void OpenPage(benchmark::State &state)
{
    for (auto step : state) {
        auto study = std::make_unique<OpenStudy>(state.range(0));
        state.PauseTiming();
        study.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(OpenPage)->Arg(3'000)->Unit(benchmark::kMillisecond);

/// Does nothing for five seconds with a file open, and, if the second argument is 1, with the search in front.
void Idle(benchmark::State &state)
{
    OpenStudy study(state.range(0));
    const CursorRest cursorRest;
    cursorRest.findChild<QTimer *>()->setInterval(0); // as if nobody had written for longer
    if (state.range(1) == 1)
        study.PressCtrl(Qt::Key_F);
    QCoreApplication::processEvents();
    constexpr int seconds = 5;
    int wakeUps = 0;
    for (auto step : state) {
        QEventLoop loop;
        QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, &loop,
                         [&wakeUps] { ++wakeUps; });
        QTimer::singleShot(1000 * seconds, &loop, &QEventLoop::quit);
        loop.exec();
    }
    state.counters["wakes_per_second"] = double(wakeUps) / seconds;
}
BENCHMARK(Idle)->Args({3'000, 0})->Args({3'000, 1})->Iterations(1);

void AllShown(benchmark::State &state)
{
    StudyRound round;
    round.Load(int(state.range(0)));
    Steps steps(state);
    for (auto step : steps)
        benchmark::DoNotOptimize(round.AllShown());
}

void InShortAndLongFile(benchmark::internal::Benchmark *timing)
{
    timing->Arg(1'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);
}
BENCHMARK(PressEnter<Lines::Fit>)->Name("PressEnter")->Apply(InShortAndLongFile);
BENCHMARK(PressEnter<Lines::Sideways>)->Name("PressEnterSideways")->Apply(InShortAndLongFile);
BENCHMARK(PressEnter<Lines::Wrapped>)->Name("PressEnterWrapped")->Apply(InShortAndLongFile);
BENCHMARK(Click)->Apply(InShortAndLongFile);
BENCHMARK(TurnPage<Lines::Fit>)->Name("TurnPage")->Apply(InShortAndLongFile);
BENCHMARK(TurnPage<Lines::Sideways>)->Name("TurnPageSideways")->Apply(InShortAndLongFile);
BENCHMARK(TurnPage<Lines::Wrapped>)->Name("TurnPageWrapped")->Apply(InShortAndLongFile);
BENCHMARK(MarkHard)->Apply(InShortAndLongFile);
BENCHMARK(StudyHard)->Apply(InShortAndLongFile);
BENCHMARK(HideAndUndo)->Apply(InShortAndLongFile);
BENCHMARK(TurnWheel<Lines::Fit>)->Name("TurnWheel")->Apply(InShortAndLongFile);
BENCHMARK(TurnWheel<Lines::Sideways>)->Name("TurnWheelSideways")->Apply(InShortAndLongFile);
BENCHMARK(TurnWheel<Lines::Wrapped>)->Name("TurnWheelWrapped")->Apply(InShortAndLongFile);
BENCHMARK(Repaint)->Apply(InShortAndLongFile);
BENCHMARK(PageDown)->Apply(InShortAndLongFile);
BENCHMARK(RepaintPlainText)->Arg(1'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(PageDownPlainText)->Arg(1'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(Zoom<Lines::Fit>)->Name("Zoom")->Apply(InShortAndLongFile);
BENCHMARK(Zoom<Lines::Sideways>)->Name("ZoomSideways")->Apply(InShortAndLongFile);
BENCHMARK(Zoom<Lines::Wrapped>)->Name("ZoomWrapped")->Apply(InShortAndLongFile);
BENCHMARK(ScrollSideways)->Apply(InShortAndLongFile);
BENCHMARK(AllShown)->Arg(1'000)->Arg(1'000'000);

} // namespace

int main(int argc, char **argv)
{
    if (!QFile::exists(StudyFilePath(1'000)))
        qFatal("STUDY_BENCH_INPUTS does not name a folder with inputs");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
