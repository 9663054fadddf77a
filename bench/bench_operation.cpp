// Carries out one whole operation of the program without its windows, for a comparison with a public tool.
//
//     bench_operation load FILE               reads a study file as the study window does, up to its table of blanks
//     bench_operation history FILE WEEKS N    opens a database and reads a history of some weeks N times
//     bench_operation statements WEEKS N      prints the statements of the above
//
// "load" prints how many milliseconds it took and by how many bytes the process has grown.
#include "store/Sqlite3.h"
#include "store/modDB_SQLite.h"
#include "support/ReadHistory.h"
#include "support/RecordingServices.h"
#include "text/modCheckText.h"
#include "text/modPictureName.h"
#include "text/modReadText.h"
#include "view/modStudyRound.h"

#include <QElapsedTimer>
#include <QFile>

#include <cstdio>
#include <unistd.h>

namespace {

// As bench_inputs makes them.
const QDate EndDate(2024, 12, 31);
const QString UserName = QStringLiteral("user");

/// Sends what goes wrong to the one who looks at the figures.
class FailingServices : public RecordingServices
{
  public:
    void ShowMessage(const QString &text) override
    {
        qFatal("%s", qPrintable(text));
    }
    void ShowMessage(const QString &text, const QString &) override
    {
        ShowMessage(text);
    }
};

/// Memory of this process that is in use now, bytes.
qint64 ResidentBytes()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').value(1).toLongLong() * sysconf(_SC_PAGESIZE) : 0;
}

void Load(const QString &path)
{
    const qint64 before = ResidentBytes();
    QElapsedTimer timer;
    timer.start();
    StudyLines lines;
    QString message;
    int errorLine = 0;
    if (!ReadTextFile(path, MaxLineBytes, &lines, &message, &errorLine))
        qFatal("%s", qPrintable(message));
    const DisplayText text(std::move(lines));
    const QStringList badPictures = BadPictureNames(text);
    StudyRound round;
    round.Load(text.Blanks().Count());
    const double elapsedMs = double(timer.nsecsElapsed()) / 1e6;
    std::printf("%.3f %lld\n", elapsedMs, static_cast<long long>(ResidentBytes() - before));
}

void ReadHistories(const QString &path, int weeks, int times)
{
    FailingServices services;
    StudyDatabase database(services);
    if (SQLite3Initialize() != 0 || database.Open(path) != 0)
        qFatal("%s cannot be opened", qPrintable(path));
    for (int i = 0; i < times; ++i)
        if (ReadHistory(database, EndDate, weeks, UserName).LineCount() == 0)
            qFatal("there is no history");
}

void PrintStatements(int weeks, int times)
{
    const int dayCount = weeks * 7;
    const QString statements = SelectStatement(EndDate, dayCount, UserName, false) + u";\n" +
                               SumTimeStatement(EndDate, dayCount, UserName) + u";\n" +
                               SumAnswersStatement(EndDate, dayCount, UserName) + u";\n";
    for (int i = 0; i < times; ++i)
        std::fputs(qPrintable(statements), stdout);
}

} // namespace

int main(int argc, char *argv[])
{
    const QByteArrayView operation = argc > 1 ? argv[1] : "";
    const QString path = argc > 2 ? QFile::decodeName(argv[2]) : QString();
    if (operation == "load")
        Load(path);
    else if (operation == "history" && argc == 5)
        ReadHistories(path, QByteArrayView(argv[3]).toInt(), QByteArrayView(argv[4]).toInt());
    else if (operation == "statements" && argc == 4)
        PrintStatements(QByteArrayView(argv[2]).toInt(), QByteArrayView(argv[3]).toInt());
    else
        qFatal("unknown operation");
    return 0;
}
