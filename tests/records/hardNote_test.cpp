// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The note of hard words.
#include "records/modHardNote.h"
#include "support/Rows.h"
#include "support/StudyText.h"
#include "support/TestFiles.h"
#include "text/modCheckText.h"
#include "text/modPictureName.h"
#include "text/modReadText.h"

#include <QDeadlineTimer>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class HardNoteTest : public testing::Test
{
  protected:
    void Mark(const QString &path, const std::vector<int> &blanks)
    {
        StudyLines lines;
        ASSERT_FALSE(ReadStudyText(path, MaxLineBytes, &lines));
        EXPECT_FALSE(marks.Write(GetFileTitle(path), DisplayText(std::move(lines)), blanks));
    }

    HardNote Note(const QStringList &paths)
    {
        HardNote note(marks, paths);
        note.GoOn(QDeadlineTimer(QDeadlineTimer::Forever));
        return note;
    }

    QStringList LinesOfNote(const HardNote &note)
    {
        EXPECT_FALSE(note.Write(folder.Path(u"note.txt"_s)));
        QStringList lines = FromCodePage932(folder.Read(u"note.txt"_s)).split(u"\r\n"_s);
        EXPECT_TRUE(lines.takeLast().isEmpty());
        return lines;
    }

    TestFolder folder;
    MarkList marks{folder.Path(u"ListMark.txt"_s), u"花子"_s};
};

} // namespace

TEST_F(HardNoteTest, MarksInSeveralFiles_AreUnderOneHeadingForEach)
{
    const QString words = folder.WriteStudyFile(
        u"txt/英単語.txt"_s, {u"[apple] りんご [red] 赤い"_s, u"[book]"_s, u"[book]"_s, u"｢図｣ [a][b][]"_s});
    const QString none = folder.WriteStudyFile(u"txt/無印.txt"_s, {u"[x]"_s});
    const QString history = folder.WriteStudyFile(u"txt/日本史.txt"_s, {u""_s, u"710年 [平城京]"_s});
    Mark(words, {2, 4, 5, 7});
    Mark(history, {1});
    EXPECT_FALSE(
        MarkList(folder.Path(u"ListMark.txt"_s), u"太郎"_s).Write(u"無印"_s, DisplayText(LinesOf({u"[x]"_s})), {1}));

    HardNote note(marks, {words, none, history});
    EXPECT_EQ(note.Done(), 0);
    EXPECT_TRUE(note.GoOn(QDeadlineTimer(0))) << "a file at a time";
    EXPECT_EQ(note.Done(), 0.5) << "a file without marks of this user is not read";
    EXPECT_FALSE(note.GoOn(QDeadlineTimer(0)));
    EXPECT_EQ(LinesOfNote(note), QStringList({u"■ 英単語"_s, u"apple りんご [red] 赤い"_s, u"[book]"_s,
                                              u"｢図｣ [a]b[]"_s, u""_s, u"■ 日本史"_s, u"710年 [平城京]"_s}));
    EXPECT_EQ(note.MissingCount(), 0);
    EXPECT_EQ(note.BlankCount(), 5);
    EXPECT_EQ(note.EntryOf(2), u"花子\t英単語\t[book]\t1\t2"_s) << "the second of two equal lines";
    const std::pair<QString, int> sources[] = {{words, 1},   {words, 1},   {words, 3},  {words, 4},
                                               {history, 2}, {history, 2}, {history, 2}};
    for (int line = 1; line <= 7; ++line)
        EXPECT_EQ(std::pair(note.SourceOf(line).path, note.SourceOf(line).line), sources[line - 1]) << line;
    for (const int line : {0, 8})
        EXPECT_EQ(note.SourceOf(line).path, QString()) << line;
}

TEST_F(HardNoteTest, WhatIsGone_IsCountedAndFilesOfOneTitleAreToldApart)
{
    const QString first = folder.WriteStudyFile(u"txt/w.txt"_s, {u"[a]"_s, u"[same]"_s});
    const QString second = folder.WriteStudyFile(u"txt/w.2.txt"_s, {u"[same]"_s, u"[c]"_s});
    const QString bad = folder.WriteStudyFile(u"txt/bad.txt"_s, {u"[a]"_s, u"["_s});
    const QString user = u"花子\t"_s;
    folder.Write(u"ListMark.txt"_s, (user + u"w\t[c]\t1\n"_s + user + u"w\t[same]\t1\t1\n"_s + user +
                                     u"w\t[same]\t1\n"_s + user + u"w\t[gone]\t1\n"_s + user + u"w\t[a]\t2\n"_s + user +
                                     u"bad\t[a]\t1\n"_s + user + u"deleted\t[a]\t1\n"_s)
                                        .toUtf8());
    const HardNote note = Note({first, second, bad});
    EXPECT_EQ(LinesOfNote(note), QStringList({u"■ w"_s, u"[same]"_s, u""_s, u"■ w.2"_s, u"[c]"_s}));
    EXPECT_EQ(note.BlankCount(), 2) << "an entry that is there twice marks one blank";
    EXPECT_EQ(note.MissingCount(), 4);
    EXPECT_EQ(note.SourceOf(5).path, second);
    EXPECT_TRUE(MissingHardNotice(4).contains(u" 4 個"));
    EXPECT_EQ(Note({}).MissingCount(), 7);
    EXPECT_TRUE(NothingHardMessage(7).contains(u"7個"));
}

TEST_F(HardNoteTest, AnyName_MakesAHeadingThatCanBeRead)
{
    const Rows<const char *, QString, QString> rows = {
        {"brackets and corner brackets", u"[a] ｢b｣ c]"_s, u"■ ［a］ 「b」 c］"_s},
        {"dots", u"a.b"_s, u"■ a.b"_s},
        {"as long as a line", QString(97, u'x'), u"■ "_s + QString(97, u'x')},
        {"longer", QString(98, u'x'), u"■ "_s + QString(95, u'x') + u"…"_s},
        {"full width", QString(60, u'語'), u"■ "_s + QString(47, u'語') + u"…"_s},
        {"not in the code page", u"한글"_s, u"■ ??"_s},
    };
    for (const auto &[what, name, heading] : rows) {
        const QString path = folder.WriteStudyFile(u"txt/"_s + name + u".txt"_s, {u"[a]"_s});
        Mark(path, {1});
        const HardNote note = Note({path});
        EXPECT_EQ(LinesOfNote(note).value(0), heading) << what;
        StudyLines lines;
        EXPECT_FALSE(ReadStudyText(folder.Path(u"note.txt"_s), MaxLineBytes, &lines)) << what;
        EXPECT_TRUE(BadPictureNames(DisplayText(std::move(lines))).isEmpty()) << what;
    }
}

TEST_F(HardNoteTest, MarksChanged_OnlyThoseEntriesChange)
{
    const QByteArray others = u"# by hand\r\n太郎\tw\t[a]\t1\r\n花子\tv\t[a]\t1\r\n"_s.toUtf8();
    const QByteArray removed = u"花子\tw\t[a]\t1\t1\r\n花子\tw\t[a]\t1\r\n"_s.toUtf8(); // one in two forms
    const QByteArray kept = u"花子\tw\t[b]\t1\r\n"_s.toUtf8();
    folder.Write(u"ListMark.txt"_s, removed + others + kept);
    const QString a = u"花子\tw\t[a]\t1"_s;
    const QString b = u"花子\tw\t[b]\t1"_s;
    EXPECT_FALSE(marks.Change({a}, {b}));
    EXPECT_EQ(folder.Read(u"ListMark.txt"_s), others + kept);
    EXPECT_FALSE(marks.Change({}, {a, b}));
    EXPECT_EQ(folder.Read(u"ListMark.txt"_s), others + kept + u"花子\tw\t[a]\t1\r\n"_s.toUtf8());
    EXPECT_FALSE(marks.Change({a}, {b}));
    EXPECT_EQ(folder.Read(u"ListMark.txt"_s), others + kept);
}

TEST(HardNotePath, OnlyTheNoteItself_IsTheNote)
{
    const Rows<const char *, QString, bool, QString> rows = {
        {"the note", u"/k/rec/苦手帳.txt"_s, true, u"/k/txt"_s},
        {"a study file of this name", u"/k/txt/苦手帳.txt"_s, false, u"/k/txt"_s},
        {"another file in that folder", u"/k/rec/a.txt"_s, false, u"/k/rec"_s},
    };
    for (const auto &[what, path, isNote, pictures] : rows) {
        EXPECT_EQ(IsHardNotePath(path), isNote) << what;
        EXPECT_TRUE(QDir::fromNativeSeparators(PictureFolderOf(path)).endsWith(pictures)) << what; // after a drive
    }
    EXPECT_TRUE(IsHardNotePath(HardNotePath(u"/k/rec"_s)));
}
