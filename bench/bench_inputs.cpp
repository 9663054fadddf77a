// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Generates the inputs of the benchmarks, the same in every run: study files in code page 932 with 15 % of their words
// in blanks and some tabs and pictures, a long one that repeats a short one, a plain ASCII text, a text of half-width
// kana, which could also be EUC, and a database of study sessions.
//
//     bench_inputs FOLDER
#include "base/modCodePage.h"
#include "base/modDateText.h"
#include "base/modFile.h"
#include "platform/modReplaceFile.h"
#include "store/modDB_SQLite.h"

#include <QFile>
#include <QTextStream>

#include <random>
#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

namespace {

using Random = std::mt19937; // portable, unlike the distributions of the standard library

int Pick(Random &random, int count)
{
    return int(random() % quint32(count));
}

QString EnglishWord(Random &random)
{
    QString word;
    for (int left = 2 + Pick(random, 8); left > 0; --left)
        word += QChar(u'a' + Pick(random, 26));
    return word;
}

QString JapaneseWord(Random &random)
{
    constexpr QStringView characters =
        u"水化学式二酸炭素年史春夏秋冬東西南北山川海空のはにをがでとも一日本語文章記録覚える忘れる";
    QString word;
    for (int left = 1 + Pick(random, 4); left > 0; --left)
        word += characters[Pick(random, int(characters.size()))];
    return word;
}

/// Words of one language, 15 % of them in brackets.
QString Phrase(Random &random, QString (*makeWord)(Random &), int wordCount, const QString &between)
{
    QString phrase;
    for (int word = 0; word < wordCount; ++word) {
        const QString text = makeWord(random);
        phrase += (word > 0 ? between : QString()) + (Pick(random, 100) < 15 ? QString(u'[' + text + u']') : text);
    }
    return phrase;
}

/// A line of a study file, shorter than 100 bytes: a sentence in Japanese or in English, or a word with its
/// translations after a tab. One in a thousand refers to a picture.
QString StudyLine(Random &random)
{
    if (Pick(random, 1000) == 0)
        return u"｢"_s + EnglishWord(random) + u'｣';
    switch (Pick(random, 3)) {
    case 0:
        return Phrase(random, JapaneseWord, 4 + Pick(random, 5), QString()) + u'。';
    case 1:
        return Phrase(random, EnglishWord, 4 + Pick(random, 4), u" "_s) + u'.';
    default:
        return Phrase(random, EnglishWord, 1, QString()) + u'\t' +
               Phrase(random, JapaneseWord, 2 + Pick(random, 3), u"，"_s);
    }
}

QString KanaLine(Random &random)
{
    QString line;
    for (int left = 2 * (4 + Pick(random, 16)); left > 0; --left)
        line += QChar(u'ｱ' + Pick(random, 44));
    return line;
}

/// @param copies  how often the lines come one after the other
void WriteText(const QString &path, int lineCount, QString (*makeLine)(Random &), int copies = 1)
{
    Random random(932);
    QByteArray bytes;
    for (int line = 0; line < lineCount; ++line)
        bytes += ToCodePage932(makeLine(random)) + "\r\n";
    bytes = bytes.repeated(copies);
    if (const FileFault fault = ReplaceFile(path, bytes))
        qFatal("%s: %s", qPrintable(path), qPrintable(fault.reason));
}

void Run(sqlite3 *database, const QByteArray &sql)
{
    if (sqlite3_exec(database, sql.constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
        qFatal("%s", sqlite3_errmsg(database));
}

/// Sessions of one user, going back from the end of 2024.
void WriteSessions(const QString &path, int sessionCount, int sessionsPerDay)
{
    QFile::remove(path);
    sqlite3 *database = nullptr;
    if (sqlite3_open(qPrintable(path), &database) != SQLITE_OK)
        qFatal("%s", sqlite3_errmsg(database));
    for (const QStringView statement : KotobanSchema)
        Run(database, statement.toUtf8());
    Run(database, "begin");
    Random random(12);
    const int secondsBetween = 12 * 3600 / sessionsPerDay; // from eight in the morning
    for (int i = 0; i < sessionCount; ++i) {
        const QDateTime start = QDateTime(QDate(2024, 12, 31).addDays(-(i / sessionsPerDay)), QTime(8, 0))
                                    .addSecs(i % sessionsPerDay * secondsBetween + Pick(random, secondsBetween));
        const QDateTime end = start.addSecs(60 + Pick(random, 3000));
        const QString row = u"insert into t_kotoban values('%1','user','%2','file%3','%4',%5)"_s.arg(
            DateText(start.date()), TimeText(start), QString::number(Pick(random, 50)), DateTimeText(end),
            QString::number(Pick(random, 200)));
        Run(database, row.toUtf8());
    }
    Run(database, "commit");
    sqlite3_close(database);
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 2)
        qFatal("usage: bench_inputs FOLDER");
    const QString folder = QFile::decodeName(argv[1]);
    for (const int lines : {1'000, 3'000, 30'000, 1'000'000})
        WriteText(JoinPath(folder, u"study_%1.txt"_s.arg(lines)), lines, StudyLine);
    WriteText(JoinPath(folder, u"repeated_1000000.txt"_s), 1'000, StudyLine, 1'000);
    WriteText(JoinPath(folder, u"kana.txt"_s), 30'000, KanaLine);
    WriteText(JoinPath(folder, u"ascii.txt"_s), 1'000'000, [](Random &random) {
        QString line;
        for (int left = 4 + Pick(random, 6); left > 0; --left)
            line += EnglishWord(random) + u' ';
        return line;
    });
    WriteSessions(JoinPath(folder, u"sessions_1000000.splite3"_s), 1'000'000, 91); // thirty years
    return 0;
}
