// Timings of what a learner waits for. The sizes are far beyond everyday ones: a file of 100,000 lines, a folder of
// 1,000 files, ten years of study.
#include "files/modHistory.h"
#include "files/modStudyFolder.h"
#include "store/modDB_SQLite.h"
#include "support/RecordingDesktop.h"
#include "support/TestFiles.h"
#include "text/modCheckText.h"
#include "text/modReadText.h"
#include "view/picText.h"

#include <QApplication>

#include <benchmark/benchmark.h>

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList ManyLines(int count)
{
    QStringList lines;
    for (int i = 0; i < count; ++i)
        lines += u"abandon  [捨てる, 見捨てる] / [(計画などを)断念する] "_s + QString::number(i);
    return lines;
}

DisplayText LongText()
{
    StudyLines lines;
    for (const QString &line : ManyLines(100'000))
        lines.Append(line);
    return DisplayText(lines);
}

void LoadFile(benchmark::State &state)
{
    const TestFolder folder;
    const QString path = folder.WriteStudyFile(u"long.txt"_s, ManyLines(int(state.range(0))));
    for (auto step : state) {
        StudyLines lines;
        QString message;
        int errorLine = 0;
        ReadTextFile(path, MaxLineBytes, &lines, &message, &errorLine);
        benchmark::DoNotOptimize(DisplayText(lines).Blanks().Count());
    }
}
BENCHMARK(LoadFile)->Arg(3'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

void PressEnter(benchmark::State &state)
{
    const DisplayText text = LongText();
    StudyRound round;
    round.Load(text.Blanks().Count());
    PageInView page{50'000, 40, 39, 100'000, true};
    for (auto step : state) {
        const EnterDecision decision = DecideEnter(round, text, page);
        if (decision.action == EnterAction::Reveal)
            round.Toggle(decision.blank);
        else
            round.HideAll();
    }
}
BENCHMARK(PressEnter);

void PaintPage(benchmark::State &state)
{
    const DisplayText text = LongText();
    StudyRound round;
    round.Load(text.Blanks().Count());
    PicText page(nullptr);
    page.resize(1000, 800);
    page.SetAppearance(9.75f, 4, true);
    page.SetStudy(&text, &round);
    page.SetTopLine(int(state.range(0)));
    QPixmap target(page.size());
    for (auto step : state)
        page.render(&target);
}
BENCHMARK(PaintPage)->Arg(1)->Arg(99'000)->Unit(benchmark::kMillisecond);

void SearchText(benchmark::State &state)
{
    const DisplayText text = LongText();
    for (auto step : state)
        benchmark::DoNotOptimize(FindText(text, u"断念"_s).size());
}
BENCHMARK(SearchText)->Unit(benchmark::kMillisecond);

void MatchKeywords(benchmark::State &state)
{
    const DisplayText text = LongText();
    KeywordList list;
    for (int i = 0; i < 5000; ++i)
        list.words += u"word"_s + QString::number(10'000 + i);
    KeywordSearch search(list);
    for (auto step : state)
        search.SetText(&text);
}
BENCHMARK(MatchKeywords)->Unit(benchmark::kMillisecond);

void ListFolder(benchmark::State &state)
{
    const TestFolder folder;
    for (int i = 0; i < 1000; ++i)
        folder.WriteStudyFile(QString::number(i) + u".txt"_s, ManyLines(300));
    for (auto step : state) {
        StudyFolder files(folder.Path());
        files.Refresh();
        for (int row = 0; row < 30; ++row) // the rows in view
            benchmark::DoNotOptimize(files.Fault(files.Names()[row]));
    }
}
BENCHMARK(ListFolder)->Unit(benchmark::kMillisecond);

void RefreshHistory(benchmark::State &state)
{
    RecordingDesktop desktop;
    StudyDatabase database(desktop);
    database.Open(u":memory:"_s);
    database.SQLite3NonQuery(u"create table t_kotoban (ymd_sta text, user_name text, hms_sta text, file_name text, "
                             u"dt_end text, num_answer integer)"_s);
    database.SQLite3NonQuery(u"create index i on t_kotoban (user_name, ymd_sta, hms_sta)"_s);
    const QDateTime first(QDate(2014, 3, 6), QTime(8, 0));
    for (int i = 0; i < 40'000; ++i) {
        const QDateTime start = first.addDays(i / 11).addSecs(i % 11 * 3600);
        DBInsRecKotoban(database, start, u"花子"_s, u"英単語"_s);
    }
    database.SQLite3NonQuery(u"update t_kotoban set dt_end = ymd_sta || ' 20:00:00', num_answer = 20"_s);
    for (auto step : state)
        benchmark::DoNotOptimize(ReadHistory(database, QDate(2024, 3, 5), 522, u"花子"_s).lines.size());
}
BENCHMARK(RefreshHistory)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
