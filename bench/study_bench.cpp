// Timings of the parts, each as the CPU time of one step. What happens on a key press, a click or a repaint is timed in
// the study window itself, in a short file and in one of a million lines.
//
//     STUDY_BENCH_INPUTS=FOLDER study_bench [options of Google Benchmark]
//
// FOLDER is what bench_inputs has filled.
#include "base/modFile.h"
#include "files/frmFile.h"
#include "search/frmSearch.h"
#include "settings/frmMsg.h"
#include "settings/modCharCode.h"
#include "settings/modSettings.h"
#include "settings/modZoom.h"
#include "support/RecordingServices.h"
#include "support/TestFiles.h"
#include "text/modCheckText.h"
#include "text/modReadText.h"
#include "view/frmText.h"
#include "view/picText.h"
#include "widgets/PageFont.h"

#include <QApplication>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include <algorithm>
#include <array>
#include <cmath>
#include <benchmark/benchmark.h>
#include <cstring>
#include <ctime>

using namespace Qt::Literals::StringLiterals;

namespace {

QString InputPath(const QString &name)
{
    return JoinPath(qEnvironmentVariable("STUDY_BENCH_INPUTS"), name);
}

QString StudyFilePath(qint64 lines)
{
    return InputPath(u"study_%1.txt"_s.arg(lines));
}

QByteArray BytesOf(const QString &path)
{
    QByteArray bytes;
    QString error;
    if (!ReadWholeFile(path, &bytes, &error))
        qFatal("%s: %s", qPrintable(path), qPrintable(error));
    return bytes;
}

DisplayText LoadText(const QString &path)
{
    StudyLines lines;
    QString message;
    int errorLine = 0;
    if (!ReadTextFile(path, MaxLineBytes, &lines, &message, &errorLine))
        qFatal("%s", qPrintable(message));
    return DisplayText(std::move(lines));
}

void LoadFile(benchmark::State &state)
{
    for (auto step : state)
        benchmark::DoNotOptimize(LoadText(StudyFilePath(state.range(0))).Blanks().Count());
}
BENCHMARK(LoadFile)->Arg(1'000)->Arg(30'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

void DetectAscii(benchmark::State &state)
{
    const QByteArray bytes = BytesOf(InputPath(u"ascii.txt"_s));
    for (auto step : state)
        benchmark::DoNotOptimize(DetectCharCode(bytes));
    state.SetBytesProcessed(state.iterations() * bytes.size());
}
BENCHMARK(DetectAscii)->Unit(benchmark::kMillisecond);

void MemchrAscii(benchmark::State &state)
{
    const QByteArray bytes = BytesOf(InputPath(u"ascii.txt"_s));
    for (auto step : state)
        benchmark::DoNotOptimize(std::memchr(bytes.data(), 0x80, size_t(bytes.size())));
    state.SetBytesProcessed(state.iterations() * bytes.size());
}
BENCHMARK(MemchrAscii)->Unit(benchmark::kMillisecond);

/// The study window with a file open in it, as a learner has it.
class OpenStudy
{
  public:
    explicit OpenStudy(qint64 lines)
    {
        folder.MakeFolder(u"txt"_s);
        QFile::link(StudyFilePath(lines), folder.Path(u"txt/study.txt"_s));
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
        middle = int(lines / 2);
        StartInTheMiddle();
    }

    void PressEnter()
    {
        Send(QKeyEvent(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier));
    }

    /// Shows the page in the middle of the file with all its answers hidden.
    void StartInTheMiddle()
    {
        scroll->setValue(middle);
        Send(QMouseEvent(QEvent::MouseButtonPress, QPointF(), QPointF(), Qt::RightButton, Qt::RightButton,
                         Qt::NoModifier));
    }

    /// Turns the wheel by some notches, away from the learner, and has the window paint.
    void TurnWheel(int notches, Qt::KeyboardModifiers modifiers = {})
    {
        Send(QWheelEvent(QPointF(50, 50), QPointF(50, 50), QPoint(), QPoint(0, 120 * notches), Qt::NoButton, modifiers,
                         Qt::NoScrollPhase, false));
    }

    /// Has the window take an event and paint what follows from it.
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
    frmText window{services, database, log, msg, {folder.Path(), folder.Path(u"Kotoban.ini"_s), u"user"_s}};
    PicText *page = nullptr;
    QScrollBar *scroll = nullptr;
    int middle = 0;
};

/// An answer is shown.
void PressEnter(benchmark::State &state)
{
    OpenStudy study(state.range(0));
    const DisplayText text = LoadText(StudyFilePath(state.range(0)));
    const int onPage = VisibleBlanks(text, PageAt(study.middle, text.LineCount(), study.page->Layout())).size();
    int pressed = 0;
    for (auto step : state) {
        study.PressEnter();
        if (++pressed % onPage == 0) { // before the page is turned
            state.PauseTiming();
            study.StartInTheMiddle();
            state.ResumeTiming();
        }
    }
}

void Click(benchmark::State &state)
{
    OpenStudy study(state.range(0));
    // Somewhere in the upper rows there is a blank; which column it starts in does not matter.
    const PageLayout &layout = study.page->Layout();
    QPointF at;
    for (int row = 1; study.page->cursor().shape() != Qt::PointingHandCursor; ++row)
        for (int x = layout.TextLeftPx(); x < study.page->width(); x += layout.cellWidthPx) {
            at = QPointF(x, layout.RowTopPx(row) + 3);
            study.Send(QMouseEvent(QEvent::MouseMove, at, at, Qt::NoButton, Qt::NoButton, Qt::NoModifier));
            if (study.page->cursor().shape() == Qt::PointingHandCursor)
                break;
        }
    for (auto step : state)
        study.Send(QMouseEvent(QEvent::MouseButtonPress, at, at, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier));
}

/// The Enter at which nothing is hidden on the page any more.
void TurnPage(benchmark::State &state)
{
    OpenStudy study(state.range(0));
    const DisplayText text = LoadText(StudyFilePath(state.range(0)));
    const PageLayout &layout = study.page->Layout();
    for (auto step : state) {
        state.PauseTiming();
        study.StartInTheMiddle();
        for ([[maybe_unused]] const int blank : VisibleBlanks(text, PageAt(study.middle, text.LineCount(), layout)))
            study.PressEnter();
        state.ResumeTiming();
        study.PressEnter();
        if (study.scroll->value() == study.middle)
            qFatal("the page has not turned");
    }
}

void TurnWheel(benchmark::State &state)
{
    OpenStudy study(state.range(0));
    for (auto step : state) {
        if (study.scroll->value() == study.scroll->maximum())
            study.scroll->setValue(1);
        study.TurnWheel(-1);
    }
}

void Zoom(benchmark::State &state)
{
    OpenStudy study(state.range(0));
    const int steps = int(ZoomSteps.size()) - 1;
    int step = 0;
    for (auto measured : state)
        study.TurnWheel(step++ / steps % 2 == 0 ? 1 : -1, Qt::ControlModifier);
}

void ScrollSideways(benchmark::State &state)
{
    OpenStudy study(state.range(0));
    study.window.resize(800, 800);
    study.TurnWheel(int(ZoomSteps.size()), Qt::ControlModifier);
    auto *const sideways = study.window.findChild<QScrollBar *>(u"HScroll"_s);
    if (sideways->maximum() == 0)
        qFatal("the page cannot be scrolled sideways");
    for (auto step : state)
        study.TurnWheel(sideways->value() == 0 ? -1 : 1, Qt::ShiftModifier);
}

void Repaint(benchmark::State &state)
{
    OpenStudy study(state.range(0));
    // Pages all over the file: one has more text on it than another.
    const int stride = study.scroll->maximum() / 20;
    for (auto step : state) {
        state.PauseTiming();
        study.scroll->setValue(1 + (study.scroll->value() + stride) % (study.scroll->maximum() - stride));
        QCoreApplication::processEvents();
        state.ResumeTiming();
        study.page->repaint();
    }
}

/// The keys that show the next page.
void PageDown(benchmark::State &state)
{
    OpenStudy study(state.range(0));
    for (auto step : state) {
        if (study.scroll->value() > study.scroll->maximum() - 100)
            study.scroll->setValue(1);
        QTest::keyClick(study.page, Qt::Key_PageDown, Qt::ControlModifier);
        QCoreApplication::processEvents();
    }
}

/// The widget that Qt has for long plain texts, with the text of a study file in the font and the size of its page.
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
    for (auto step : state) {
        state.PauseTiming();
        scroll->setValue(1 + (scroll->value() + stride) % (scroll->maximum() - stride));
        QCoreApplication::processEvents();
        state.ResumeTiming();
        text.edit.viewport()->repaint();
    }
}

void PageDownPlainText(benchmark::State &state)
{
    PlainText text(state.range(0));
    for (auto step : state) {
        if (text.edit.verticalScrollBar()->value() > text.edit.verticalScrollBar()->maximum() - 100)
            text.edit.moveCursor(QTextCursor::Start);
        QKeyEvent key(QEvent::KeyPress, Qt::Key_PageDown, Qt::NoModifier);
        QCoreApplication::sendEvent(&text.edit, &key);
        QCoreApplication::processEvents();
    }
}

void AskWhetherAllIsShown(benchmark::State &state)
{
    StudyRound round;
    round.Load(int(state.range(0)));
    for (auto step : state)
        benchmark::DoNotOptimize(round.AllShown());
}

void InShortAndLongFile(benchmark::internal::Benchmark *timing)
{
    timing->Arg(1'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);
}
BENCHMARK(PressEnter)->Apply(InShortAndLongFile);
BENCHMARK(Click)->Apply(InShortAndLongFile);
BENCHMARK(TurnPage)->Apply(InShortAndLongFile);
BENCHMARK(TurnWheel)->Apply(InShortAndLongFile);
BENCHMARK(Repaint)->Apply(InShortAndLongFile);
BENCHMARK(PageDown)->Apply(InShortAndLongFile);
BENCHMARK(RepaintPlainText)->Arg(1'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(PageDownPlainText)->Arg(1'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(Zoom)->Apply(InShortAndLongFile);
BENCHMARK(ScrollSideways)->Apply(InShortAndLongFile);
BENCHMARK(AskWhetherAllIsShown)->Arg(1'000)->Arg(1'000'000);

void CountHits(benchmark::State &state)
{
    const DisplayText text = LoadText(StudyFilePath(state.range(0)));
    const QString wanted = std::array{u"春夏"_s, u"wor"_s, u"s"_s}.at(size_t(state.range(1)));
    for (auto step : state) {
        Hits hits(&text, std::make_unique<PlainFinder>(wanted), 1);
        hits.CountOn(QDeadlineTimer(QDeadlineTimer::Forever));
        state.counters["hits"] = hits.Count();
    }
}
BENCHMARK(CountHits)->ArgsProduct({{30'000, 1'000'000}, {0, 1, 2}})->Unit(benchmark::kMillisecond);

/// Keywords that a text has: beginnings of its words, half of them English.
KeywordList KeywordsOf(const DisplayText &text, int count)
{
    KeywordList list;
    QStringList words[2];
    for (int line = 1; line <= text.LineCount(); line += 7) {
        const QString word = text.Line(line).trimmed().toString().section(u' ', 0, 0).section(u'\t', 0, 0).left(4);
        QStringList &kind = words[IsEnglishWord(word) ? 1 : 0];
        if (word.size() > 1 && kind.size() < count / 2 && !kind.contains(word))
            kind += word;
    }
    list.words = words[0] + words[1];
    std::sort(list.words.begin(), list.words.end());
    return list;
}

void CountKeywords(benchmark::State &state)
{
    const DisplayText text = LoadText(StudyFilePath(state.range(0)));
    KeywordSearch search(KeywordsOf(text, 500));
    for (auto step : state) {
        search.SetText(&text);
        search.CountOn(QDeadlineTimer(QDeadlineTimer::Forever));
    }
    state.counters["keywords"] = double(search.List().words.size());
}
BENCHMARK(CountKeywords)->Arg(30'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

/// CPU time of a step, in milliseconds.
template <typename Step>
double TimeOf(const Step &step)
{
    const std::clock_t start = std::clock();
    step();
    return double(std::clock() - start) * 1000 / CLOCKS_PER_SEC;
}

/// Typing ten letters while 500 keywords are being counted: the longest time without a turn of the event loop, and the
/// time from the last letter to a place 10,000 lines from the page in view.
void TypeSearch(benchmark::State &state)
{
    const DisplayText text = LoadText(StudyFilePath(state.range(0)));
    KeywordSearch search(KeywordsOf(text, 500));
    const int topLine = qMax(1, text.LineCount() - 10'000);
    const QString wanted = text.Line(text.LineCount()).trimmed().toString();
    double longest = 0;
    double toHit = 0;
    for (auto step : state) {
        frmSearch window(
            search, [topLine] { return topLine; }, nullptr);
        window.SetText(&text);
        window.Open();
        QCoreApplication::processEvents();
        auto *const box = window.findChild<QLineEdit *>(u"txtSearch"_s);
        for (int letter = 0; letter < 10; ++letter) {
            QKeyEvent key(QEvent::KeyPress, 0, Qt::NoModifier, wanted.mid(letter, 1));
            longest = qMax(longest, TimeOf([&] { QCoreApplication::sendEvent(box, &key); }));
            for (int turn = 0; turn < 10; ++turn)
                longest = qMax(longest, TimeOf([] { QCoreApplication::processEvents(); }));
        }
        box->setText(wanted.chopped(1));
        toHit = qMax(toHit, TimeOf([&] {
                         box->setText(wanted);
                         window.GoOn(false);
                     }));
    }
    state.counters["longest_ms"] = longest;
    state.counters["to_hit_ms"] = toHit;
}
BENCHMARK(TypeSearch)->Arg(30'000)->Arg(1'000'000)->Iterations(5)->Unit(benchmark::kMillisecond);

/// The file selection window over a folder of its own, on a certain day.
class OpenFileList
{
  public:
    explicit OpenFileList(const QString &databasePath, int files = 0)
    {
        folder.MakeFolder(u"txt"_s);
        const QByteArray bytes = BytesOf(StudyFilePath(1'000));
        for (int i = 0; i < files; ++i)
            folder.Write(u"txt/第%1回 英単語.txt"_s.arg(i), bytes);
        database.Open(databasePath);
        services.now = QDateTime(QDate(2024, 12, 31), QTime(23, 0));
    }

    /// Takes a step and has the window do all that follows from it. @return the longest time between two turns of the
    /// event loop, in milliseconds of CPU time
    template <typename Step>
    double LongestTimeOf(const Step &step)
    {
        double longest = TimeOf(step);
        for (int quiet = 0; quiet < 3;) {
            const double elapsed = TimeOf([] { QCoreApplication::processEvents(); });
            quiet = elapsed < 0.05 ? quiet + 1 : 0;
            longest = qMax(longest, elapsed);
        }
        return longest;
    }

    TestFolder folder;
    RecordingServices services;
    StudyDatabase database{services};
    frmMsg msg{services, u"wav"_s};
    SettingsFile settings{folder.Path(u"Kotoban.ini"_s)};
    frmFile window{services, database, msg, settings, folder.Path(), u"user0"_s, nullptr};
};

/// A list of files is shown for the first time, and then gone through page by page, which has all of them checked.
void ShowFileList(benchmark::State &state)
{
    double shown = 0;
    double longest = 0;
    for (auto step : state) {
        state.PauseTiming();
        OpenFileList files(u":memory:"_s, int(state.range(0)));
        state.ResumeTiming();
        shown = qMax(shown, TimeOf([&] {
                         files.window.show();
                         QCoreApplication::processEvents();
                     }));
        auto *const list = files.window.findChild<QListView *>(u"lstFile"_s);
        while (list->currentIndex().row() < list->model()->rowCount() - 1) {
            QKeyEvent key(QEvent::KeyPress, Qt::Key_PageDown, Qt::NoModifier);
            longest = qMax(longest, files.LongestTimeOf([&] { QCoreApplication::sendEvent(list, &key); }));
        }
    }
    state.counters["shown_ms"] = shown;
    state.counters["longest_ms"] = longest;
}
BENCHMARK(ShowFileList)->Arg(10'000)->Iterations(1)->Unit(benchmark::kMillisecond);

/// The file selection window opens with a million sessions behind it, and then a history of some weeks is asked for.
void ShowHistory(benchmark::State &state)
{
    double longest = 0;
    for (auto step : state) {
        OpenFileList files(InputPath(u"sessions_1000000.splite3"_s));
        longest = qMax(longest, files.LongestTimeOf([&] { files.window.show(); }));
        auto *const weeks = files.window.findChild<QLineEdit *>(u"txtWeekN"_s);
        const QString typed = QString::number(state.range(0));
        longest = qMax(longest, files.LongestTimeOf([&] { weeks->setText(typed); }));
    }
    state.counters["longest_ms"] = longest;
}
BENCHMARK(ShowHistory)->Arg(2)->Arg(9'999)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    if (!QFile::exists(StudyFilePath(1'000)))
        qFatal("STUDY_BENCH_INPUTS names no folder with inputs");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
