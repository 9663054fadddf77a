// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Benchmarks of the lists: the search, the file selection, tables and the study history. The counter longest_ms is the
// longest time between two turns of the event loop, in milliseconds of CPU time.
#include "Inputs.h"
#include "Steps.h"
#include "app/frmLogin.h"
#include "app/modUserList.h"
#include "exchange/frmTable.h"
#include "files/frmFile.h"
#include "platform/modProfile.h"
#include "records/modHardNote.h"
#include "records/modPlaceList.h"
#include "search/frmSearch.h"
#include "settings/modSettings.h"
#include "support/RecordingServices.h"
#include "support/TestFiles.h"
#include "text/modCheckText.h"
#include "widgets/frmMsg.h"

#include <QApplication>
#include <QComboBox>
#include <QDeadlineTimer>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QTabBar>
#include <QTimer>

#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>

using namespace Qt::Literals::StringLiterals;

namespace {

void CountHits(benchmark::State &state)
{
    const DisplayText text = LoadText(StudyFilePath(state.range(0)));
    const QString wanted = std::array{u"春夏"_s, u"wor"_s, u"s"_s}.at(size_t(state.range(1)));
    Steps steps(state, 1);
    for (auto step : steps) {
        Hits hits(&text, std::make_unique<PlainFinder>(wanted), 1);
        hits.CountOn(QDeadlineTimer(QDeadlineTimer::Forever));
        state.counters["hits"] = hits.Count();
    }
}
BENCHMARK(CountHits)->ArgsProduct({{30'000, 1'000'000}, {0, 1, 2}})->Unit(benchmark::kMillisecond);

/// Keywords that occur in a text: beginnings of its words, half of them English.
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
    Steps steps(state, 1);
    for (auto step : steps) {
        search.SetText(&text);
        search.CountOn(QDeadlineTimer(QDeadlineTimer::Forever));
    }
    state.counters["keywords"] = double(search.List().words.size());
}
BENCHMARK(CountKeywords)->Arg(30'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

/// Types ten letters while 500 keywords are being counted. Measures the longest time without a turn of the event loop,
/// and the time from the last letter to a hit 10,000 lines from the page in view.
void TypeSearch(benchmark::State &state)
{
    const DisplayText text = LoadText(StudyFilePath(state.range(0)));
    KeywordSearch search(KeywordsOf(text, 500));
    SearchedPage page{.topLine = qMax(1, text.LineCount() - 10'000)};
    const QString wanted = text.Line(text.LineCount()).trimmed().toString();
    double longest = 0;
    double toHit = 0;
    for (auto step : state) {
        frmSearch window(
            search, [&page] { return page; }, nullptr);
        QObject::connect(&window, &frmSearch::SpanChosen, [&page](const TextSpan &found) { page.found = found; });
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

/// The file selection window for a folder of its own, on a fixed date.
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

    /// Runs a step and lets the window do everything that follows.
    /// @return the longest time between two turns of the event loop, in milliseconds of CPU time
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
    frmFile window{services, database, msg, settings, folder.Path(), u"user"_s, nullptr};
};

/// Shows a list of files for the first time, then pages through it, which checks all of them.
void ShowFileList(benchmark::State &state)
{
    double shown = 0;
    double longest = 0;
    for (auto step : state) {
        state.PauseTiming();
        OpenFileList files(u":memory:"_s, int(state.range(0)));
        state.ResumeTiming();
        shown = qMax(shown, TimeOf([&] {
                         const Counting counting;
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

/// Opens the file selection window with a million sessions recorded, with one of its charts, then requests a history of
/// some weeks, and when that is read, which may be all of them, another one in its place.
void ShowHistory(benchmark::State &state)
{
    double longest = 0;
    for (auto step : state) {
        OpenFileList files(InputPath(u"sessions_1000000.splite3"_s));
        files.window.findChild<QTabBar *>(u"tabCharts"_s)->setCurrentIndex(int(state.range(1)));
        longest = qMax(longest, files.LongestTimeOf([&] { files.window.show(); }));
        auto *const weeks = files.window.findChild<QLineEdit *>(u"txtWeekN"_s);
        const QString typed = QString::number(state.range(0));
        longest = qMax(longest, files.LongestTimeOf([&] { weeks->setText(typed); }));
        longest = qMax(longest, files.LongestTimeOf([&] { weeks->setText(u"1"_s); }));
    }
    state.counters["longest_ms"] = longest;
}
BENCHMARK(ShowHistory)->ArgsProduct({{2, 9'999}, {0, 1, 2}})->Iterations(1)->Unit(benchmark::kMillisecond);

/// Types separators in the window of a table of some megabytes. key_ms is the mean time of a key, longest_ms the
/// longest time between two turns of the event loop until the whole table is read.
void TypeTableSeparator(benchmark::State &state)
{
    const TestFolder folder;
    folder.MakeFolder(u"txt"_s);
    const QByteArray row = "water,\xE6\xB0\xB4 - H2O,\"It is, they say, wet.\"\n";
    const QString table =
        folder.Write(u"a.csv"_s, row.repeated(qsizetype(state.range(0)) * BytesPerMegabyte / row.size()));
    RecordingServices services;
    frmMsg msg(services, u"wav"_s);
    frmTable window(msg, folder.Path(u"txt"_s), nullptr);
    double keys = 0;
    double longest = 0;
    qint64 typed = 0;
    QTimer opening;
    QObject::connect(&opening, &QTimer::timeout, [&] {
        if (!window.isVisible())
            return; // still reading
        opening.stop();
        auto *const separator = window.findChild<QComboBox *>(u"cboTableSeparator"_s);
        for (auto step : state) {
            const QString text = QStringList({u" "_s, u" -"_s, u" - "_s, u";"_s})[typed++ % 4];
            const double keyMs = TimeOf([&] { separator->setEditText(text); });
            keys += keyMs;
            longest = qMax(longest, keyMs);
            for (int quiet = 0; quiet < 3;) {
                const double elapsed = TimeOf([] { QCoreApplication::processEvents(); });
                quiet = elapsed < 0.05 ? quiet + 1 : 0;
                longest = qMax(longest, elapsed);
            }
        }
        window.close();
    });
    opening.start(0);
    window.Make(table);
    state.counters["key_ms"] = keys / double(typed);
    state.counters["longest_ms"] = longest;
}
BENCHMARK(TypeTableSeparator)->Arg(1)->Arg(52)->Iterations(8)->Unit(benchmark::kMillisecond);

/// Paints the calendar of a user who has studied for years.
void PaintCalendar(benchmark::State &state)
{
    OpenFileList files(InputPath(u"sessions_1000000.splite3"_s));
    files.window.findChild<QTabBar *>(u"tabCharts"_s)->setCurrentIndex(1);
    files.LongestTimeOf([&] { files.window.show(); });
    auto *const calendar = files.window.findChild<QWidget *>(u"picCalendar"_s);
    for (auto step : state)
        calendar->repaint();
}
BENCHMARK(PaintCalendar)->Unit(benchmark::kMicrosecond);

/// Tenths of the largest list that is read.
void Tenths(benchmark::internal::Benchmark *benchmark)
{
    benchmark->Arg(1)->Arg(10)->Iterations(1)->Unit(benchmark::kMillisecond);
}

/// A file of so many tenths of a size. @param pattern  repeated in it; the worst one for the list
QByteArray LargeList(const benchmark::State &state, qint64 bytes, const QByteArray &pattern)
{
    return pattern.repeated(bytes * state.range(0) / 10 / pattern.size());
}

void ShowLargeUserList(benchmark::State &state)
{
    const TestFolder folder;
    const QString path = folder.Write(u"ListUserName.txt"_s, LargeList(state, MaxUserListBytes, "\n"));
    RecordingServices services;
    frmMsg msg(services, folder.Path());
    for (auto step : state) {
        frmLogin login(services, msg, path, u"taro"_s);
        login.show();
        QCoreApplication::processEvents();
    }
}
BENCHMARK(ShowLargeUserList)->Apply(Tenths);

void ShowLargeKeywordList(benchmark::State &state)
{
    const TestFolder folder;
    QByteArray list;
    for (int number = 0; list.size() < MaxKeywordListBytes * state.range(0) / 10 - 10; ++number)
        list += "\x90\x85" + QByteArray::number(number, 36) + "\n";
    const QString path = folder.Write(u"KeywordList.txt"_s, list);
    for (auto step : state) {
        KeywordSearch search(ReadKeywordList(path));
        frmSearch window(
            search, [] { return SearchedPage(); }, nullptr);
        window.Open();
        QCoreApplication::processEvents();
    }
}
BENCHMARK(ShowLargeKeywordList)->Apply(Tenths);

void ReadLargeSettings(benchmark::State &state)
{
    const TestFolder folder;
    const SettingsFile file(
        folder.Write(u"Kotoban.ini"_s, "[setting]" + LargeList(state, MaxProfileBytes - 10, "\n=")));
    QStringList messages;
    for (auto step : state)
        file.Read(DefaultSettings(), UpperBounds(300), &messages);
}
BENCHMARK(ReadLargeSettings)->Apply(Tenths);

void FindInLargeMarkList(benchmark::State &state)
{
    const TestFolder folder;
    const MarkList marks(folder.Write(u"ListMark.txt"_s, LargeList(state, MaxMarkListBytes, "\n")), u"user"_s);
    Steps steps(state, 1);
    for (auto step : steps)
        benchmark::DoNotOptimize(marks.Find(u"study"_s, DisplayText()));
}
BENCHMARK(FindInLargeMarkList)->Apply(Tenths);

/// Saves a mark more, or one less, beside 100 in a study file.
void SaveMark(benchmark::State &state)
{
    constexpr int count = 100;
    const TestFolder folder;
    const MarkList marks(folder.Path(u"ListMark.txt"_s), u"user"_s);
    const DisplayText text = LoadText(StudyFilePath(int(state.range(0))));
    std::vector<int> blanks;
    blanks.reserve(count + 1);
    for (int mark = 0; mark < count; ++mark)
        blanks.push_back(1 + mark * (text.Blanks().Count() / count));
    for (auto step : Steps(state)) {
        if (blanks.size() > count)
            blanks.pop_back();
        else
            blanks.push_back(text.Blanks().Count());
        if (marks.Write(u"study"_s, text, blanks))
            state.SkipWithError("the mark was not saved");
    }
}
BENCHMARK(SaveMark)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

/// Counts 2,000 marks in 200 study files of 1,000 lines, and makes and reads the note of them.
void MakeHardNote(benchmark::State &state)
{
    constexpr int fileCount = 200;
    const TestFolder folder;
    folder.MakeFolder(u"rec"_s);
    const MarkList marks(folder.Path(u"ListMark.txt"_s), u"user"_s);
    const QByteArray bytes = BytesOf(StudyFilePath(1'000));
    const DisplayText text = LoadText(StudyFilePath(1'000));
    const int count = int(state.range(0)) / fileCount;
    std::vector<int> blanks;
    blanks.reserve(count);
    for (int mark = 0; mark < count; ++mark)
        blanks.push_back(1 + mark * text.Blanks().Count() * fileCount / int(state.range(0)));
    QStringList entries;
    QStringList paths;
    for (int file = 0; file < fileCount; ++file) {
        const QString title = u"第%1回 英単語"_s.arg(file);
        paths += folder.Write(u"txt/"_s + title + u".txt"_s, bytes);
        entries += marks.Entries(title, text, blanks);
    }
    folder.Write(u"ListMark.txt"_s, (entries.join(u"\r\n"_s) + u"\r\n"_s).toUtf8());
    for (auto step : state) {
        benchmark::DoNotOptimize(marks.EntriesByTitle());
        HardNote note(marks, paths);
        while (note.GoOn(QDeadlineTimer(QDeadlineTimer::Forever)))
            ;
        StudyLines lines;
        const QString path = HardNotePath(folder.Path(u"rec"_s));
        if (note.BlankCount() != state.range(0) || note.Write(path) || ReadStudyText(path, MaxLineBytes, &lines))
            state.SkipWithError("the note was not made");
    }
}
BENCHMARK(MakeHardNote)->Arg(2'000)->Unit(benchmark::kMillisecond);

void CountInLargeMarkList(benchmark::State &state)
{
    const TestFolder folder;
    const QString path = folder.Write(u"ListMark.txt"_s, LargeList(state, MaxMarkListBytes, "user\tstudy\t[a]\t1\n"));
    const MarkList marks(path, u"user"_s);
    for (auto step : state)
        benchmark::DoNotOptimize(marks.EntriesByTitle());
}
BENCHMARK(CountInLargeMarkList)->Apply(Tenths);

void WriteLargePlaceList(benchmark::State &state)
{
    const TestFolder folder;
    const PlaceList places(folder.Write(u"ListPlace.txt"_s, LargeList(state, MaxPlaceListBytes, "a\tb\t1\n")));
    Steps steps(state, 1);
    for (auto step : steps)
        if (const FileFault fault = places.Write(u"user"_s, u"new"_s, {.line = 7}))
            state.SkipWithError(qPrintable(fault.reason));
}
BENCHMARK(WriteLargePlaceList)->Apply(Tenths);

} // namespace
