// Random input, from seeds that are the same in every run, for what reads bytes that the program did not write. The
// sanitizers are the judges; the expectations are what must hold for any input.
#include "platform/modCodePage.h"
#include "platform/modCommandLine.h"
#include "platform/modProfile.h"
#include "platform/modSpeechScript.h"
#include "settings/modCharCode.h"
#include "support/TestFiles.h"
#include "text/modCheckText.h"
#include "text/modDisplayText.h"
#include "text/modPictureName.h"
#include "text/modReadText.h"

#include <gtest/gtest.h>
#include <random>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int Runs = 3000;

/// Bytes that lean towards the ones that decide something.
QByteArray RandomBytes(std::mt19937 &random, int longest)
{
    static const QByteArray telling("[]\r\n\t+-\x1B$B(\"\\ ={};ab\0\x81\x8E\x93\xFA\xA4\xA1\xE3\x82\xFD\xFE\xFF", 32);
    std::uniform_int_distribution<int> length(0, longest);
    std::uniform_int_distribution<int> any(0, 255);
    std::uniform_int_distribution<qsizetype> pick(0, telling.size() - 1);
    QByteArray bytes;
    for (int left = length(random); left > 0; --left)
        bytes += any(random) < 200 ? telling[pick(random)] : char(any(random));
    return bytes;
}

/// What the reader notices on its way is what a look at each line gives.
void ExpectNoticedRightly(const StudyLines &lines)
{
    qsizetype longest = 0;
    bool takeTurns = true;
    for (int line = 1; line <= lines.Count(); ++line) {
        longest = qMax(longest, GetByteLength(lines.at1(line)));
        takeTurns = takeTurns && IsBracketCountEqual(lines.at1(line)) && IsBracketOrderValid(lines.at1(line));
    }
    EXPECT_EQ(lines.LongestLineBytes(), longest);
    EXPECT_EQ(lines.BracketsTakeTurns(), takeTurns);
}

} // namespace

TEST(Random, AFileIsRefusedOrMakesAConsistentTable)
{
    std::mt19937 random(20240305);
    const TestFolder folder;
    int accepted = 0;
    for (int run = 0; run < Runs; ++run) {
        const QByteArray bytes = RandomBytes(random, run % 120);
        EXPECT_GE(int(DetectCharCode(bytes)), 0);
        const QString text = FromCodePage932(bytes);
        EXPECT_EQ(GetByteLength(text), ToCodePage932(text).size());
        StudyLines lines;
        ReadAllLines(bytes, &lines);
        ExpectNoticedRightly(lines);
        QString message;
        int errorLine = 0;
        if (!ReadTextFile(folder.Write(u"a.txt"_s, bytes), MaxLineBytes, &lines, &message, &errorLine)) {
            EXPECT_FALSE(message.isEmpty());
            EXPECT_GE(errorLine, 1);
            continue;
        }
        ++accepted;
        BadPictureNames(lines);
        const DisplayText display(lines);
        for (int blank = 1; blank <= display.Blanks().Count(); ++blank) {
            EXPECT_FALSE(display.Answer(blank).contains(u'['));
            const BoxEdges box = GetBqInfoFromLine(display, blank, 7, 5);
            EXPECT_GE(box.rightPx - box.leftPx, 14);
        }
        for (int line = 1; line <= display.LineCount(); ++line)
            EXPECT_EQ(GetByteLength(display.MaskedLine(line)), GetByteLength(display.Line(line)));
    }
    EXPECT_GT(accepted, Runs / 100) << "the input is refused too early to test anything";
}

TEST(Random, AProfileKeepsWhatIsWrittenIntoIt)
{
    std::mt19937 random(932);
    const TestFolder folder;
    for (int run = 0; run < Runs / 10; ++run) {
        const QString path = folder.Write(u"a.ini"_s, RandomBytes(random, 200));
        EXPECT_TRUE(WriteProfile(path, u"setting"_s, u"Key"_s, u"value"_s));
        EXPECT_EQ(ReadProfile(path, u"setting"_s, u"KEY"_s, QString(), 99), u"value"_s);
    }
}

TEST(Random, ACommandLineAndAScriptAreTakenApart)
{
    std::mt19937 random(17);
    for (int run = 0; run < Runs; ++run) {
        const QByteArray bytes = RandomBytes(random, 60);
        ParseCommandLine(FromCodePage932(bytes), [](const QString &name) { return name.size() == 5; });
        SpokenText(bytes);
    }
}
