// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "support/Rows.h"
#include "support/TestFiles.h"
#include "write/modDraft.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class Drafts : public testing::Test
{
  protected:
    /// Opens a file with some contents. @param name  in the folder
    WrittenFile Open(const QString &name, const QByteArray &bytes)
    {
        WrittenFile file;
        refusal = OpenToWrite(folder.Write(name, bytes), &file, &text, &isChanged);
        return file;
    }

    SaveResult Save(const QString &newText, WrittenFile *file, OnConflict onConflict = OnConflict::Stop)
    {
        return SaveDraft(newText, file, QDate::currentDate(), onConflict);
    }

    QStringList Files() const
    {
        return QDir(folder.Path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    TestFolder folder;
    QString text;
    QString refusal;
    bool isChanged = false;
};

} // namespace

TEST_F(Drafts, Open_DecodesWhatCanBecomeAStudyFile)
{
    const Rows<const char *, QByteArray, QString, bool> rows = {
        {"empty", "", u""_s, false},
        {"Shift_JIS, any line ends", "\x93\x8C\x8B\x9E\r\n[a\rb\n", u"東京\n[a\nb\n"_s, false},
        {"UTF-8", "\xE6\x9D\xB1\xE4\xBA\xAC \xF0\x9F\x98\x80\n", u"東京 😀\n"_s, true},
        {"UTF-16",
         QByteArray("\xFF\xFE"
                    "a\0\n\0",
                    6),
         u"a\n"_s, true},
    };
    for (const auto &[name, bytes, expected, expectedChanged] : rows) {
        const WrittenFile file = Open(u"a.txt"_s, bytes);
        EXPECT_EQ(refusal, QString()) << name;
        EXPECT_EQ(text, expected) << name;
        EXPECT_EQ(isChanged, expectedChanged) << name;
        EXPECT_EQ(file.digest, DigestOf(bytes)) << name;
    }
}

TEST_F(Drafts, Open_RefusesWhatIsTooLargeOrNoText)
{
    const QString noText =
        u"次のファイルは，テキストファイルではないため，ここでは書けません。\r\n    ファイル名＝a.txt\r\n\r\n"
        u"ワープロや表計算のファイルなら，そのソフトでテキスト（.txt）として保存し直してください。\r\n"
        u"学習ファイルが壊れたのなら，同じフォルダの「a.txt.bak」に前の内容が残っていることがあります。"_s;
    const Rows<const char *, QByteArray, QString> rows = {
        {"at the limit", QByteArray("a\n").repeated(MaxWriteBytes / 2), {}},
        {"line at the limit", QByteArray(MaxWriteLine, 'a') + "\r\n", {}},
        {"too large", QByteArray(MaxWriteBytes + 1, 'a'), TooLargeToWriteMessage(u"a"_s)},
        {"line too long", "a\r\n" + QByteArray(MaxWriteLine + 1, 'a') + "\r\n", EndlessLineMessage(u"a"_s)},
        {"no text", QByteArray("a\0\0\0b", 5), noText},
        {"no text, in no encoding", QByteArray("PK\x03\x04\0\xFF\x80\0", 8), noText},
        {"no text, in UTF-16", QByteArray("\xFF\xFE\0\0", 4), noText},
    };
    for (const auto &[name, bytes, message] : rows) {
        Open(u"a.txt"_s, bytes);
        EXPECT_EQ(refusal, message) << name;
        EXPECT_EQ(text.isEmpty(), !refusal.isEmpty()) << name;
    }
    WrittenFile file;
    EXPECT_TRUE(OpenToWrite(folder.Path(u"none.txt"_s), &file, &text, &isChanged).contains(u"none"_s));
}

TEST_F(Drafts, Encode_KeepsLineEndsAndBytesOfUnchangedLines)
{
    // 87 90 and 81 E0 are the same character, and so are FA 5C and ED 40; FF is none.
    const Rows<const char *, QByteArray, QString, QByteArray> rows = {
        {"new file", "", u"a\nb\n"_s, "a\r\nb\r\n"},
        {"LF", "a\nb\n", u"a\nc\nb\n"_s, "a\nc\nb\n"},
        {"CR", "a\rb\r", u"a\rb\rc"_s.replace(u'\r', u'\n'), "a\rb\rc"},
        {"most of them", "a\nb\nc\r\n", u"a\nb\nc\n"_s, "a\nb\nc\n"},
        {"equally many", "a\nb\r\n", u"a\nb\n"_s, "a\r\nb\r\n"},
        {"end of the last line removed", "a\r\nb\r\n", u"a\nb"_s, "a\r\nb"},
        {"other codes above and below a change", "\x87\x90\n\x87\x90x\n\xED\x40\xFF", u"≒\n≒y\n纊\uFFFD"_s,
         "\x87\x90\n\x81\xE0y\n\xED\x40\xFF"},
        {"moved", "a\n\x87\x90\nb\n", u"b\n≒\na\n"_s, "b\n\x87\x90\na\n"},
        {"of equal texts, each its own", "a\n\x87\x90\n\x81\xE0\nb\n", u"x\n≒\n≒\ny\n"_s, "x\n\x87\x90\n\x81\xE0\ny\n"},
        {"doubled", "\x87\x90\na\n", u"x\n≒\n≒\ny"_s, "x\n\x87\x90\n\x87\x90\ny"},
        {"all removed", "a\nb\n", {}, ""},
    };
    for (const auto &[name, before, newText, expected] : rows) {
        const WrittenFile file = Open(u"a.txt"_s, before);
        const EncodedDraft encoded = EncodeDraft(newText, file);
        EXPECT_EQ(encoded.unwritableCount, 0) << name;
        EXPECT_EQ(encoded.bytes, expected) << name;
    }
    // The bytes of a file in another encoding are not those of any line, but its line ends stay.
    const WrittenFile file = Open(u"a.txt"_s, "\xE6\x9D\xB1\n");
    EXPECT_EQ(EncodeDraft(text, file).bytes, "\x93\x8C\n");
}

TEST_F(Drafts, UnwritableCharacter_StopsSavingUntilReplaced)
{
    WrittenFile file = Open(u"a.txt"_s, "\xFFz\r\n");
    const QString newText = text + u"é か\u3099\n😀\u200B"_s;
    const SaveResult stopped = Save(newText, &file);
    EXPECT_EQ(stopped.outcome, SaveResult::Unwritable);
    EXPECT_EQ(Files(), QStringList(u"a.txt"_s));
    EXPECT_EQ(folder.Read(u"a.txt"_s), "\xFFz\r\n");
    EXPECT_EQ(UnwritableQuestion(stopped.encoded),
              u"Shift_JISにない文字が4個あるため，保存できません。\r\n\r\n"
              "  2行目 1文字目：é（U+00E9） → e\r\n"
              "  2行目 4文字目：\u3099（U+3099） → （前の文字に合わせるか，なくします）\r\n"
              "  3行目 1文字目：😀（U+1F600） → 〓\r\n"
              "  3行目 3文字目：U+200B → （前の文字に合わせるか，なくします）\r\n\r\n"
              "このように置き換えて，保存しますか？"_s);
    const QString replaced = WithUnwritableReplaced(newText, file);
    EXPECT_EQ(replaced, u"\uFFFDz\ne が\n〓"_s);
    EXPECT_EQ(Save(replaced, &file).outcome, SaveResult::Saved);
    EXPECT_EQ(folder.Read(u"a.txt"_s), QByteArray("\xFFz\r\ne \x82\xAA\r\n\x81\xAC"));
    EXPECT_EQ(UnwritableQuestion(EncodeDraft(u"😀"_s.repeated(7), {})).count(u"ほかに2個"_s), 1);
}

TEST_F(Drafts, FirstSaveOfADay_KeepsTheOldFile)
{
    WrittenFile file = Open(u"a.txt"_s, "[one]\r\n");
    SaveResult saved = Save(u"[two]\n"_s, &file);
    EXPECT_EQ(saved.outcome, SaveResult::Saved);
    EXPECT_EQ(saved.refusal, QString());
    EXPECT_EQ(QFileInfo(saved.keptPath).fileName(), u"a.txt.bak"_s);
    EXPECT_EQ(Save(u"[three]\n"_s, &file).keptPath, QString()) << "only once a day";
    WrittenFile again = Open(u"a.txt"_s, folder.Read(u"a.txt"_s));
    EXPECT_EQ(Save(u"[four]\n"_s, &again).keptPath, QString()) << "also in another window";
    saved = SaveDraft(u"[five\n"_s, &again, QDate::currentDate().addDays(1), OnConflict::Stop);
    EXPECT_EQ(QFileInfo(saved.keptPath).fileName(), u"a.txt.bak2"_s);
    EXPECT_TRUE(saved.refusal.startsWith(u"次の行で[の数と]"_s)) << "it is saved, and refused for study";
    EXPECT_EQ(folder.Read(u"a.txt"_s), "[five\r\n");
    EXPECT_EQ(folder.Read(u"a.txt.bak"_s), "[one]\r\n");
    EXPECT_EQ(folder.Read(u"a.txt.bak2"_s), "[four]\r\n");
    const QDate later = QDate::currentDate().addDays(9);
    EXPECT_EQ(SaveDraft(u"[five\n"_s, &again, later, OnConflict::Stop).keptPath, QString()) << "nothing was changed";
}

TEST_F(Drafts, FileChangedMeanwhile_IsNotLost)
{
    const QString twin = u"a（ほかの変更）.txt"_s;
    const Rows<const char *, OnConflict, SaveResult::Outcome, QByteArray, QByteArray, QByteArray> rows = {
        {"stop", OnConflict::Stop, SaveResult::Conflict, "theirs", "(no file)", "(no file)"},
        {"both", OnConflict::KeepBoth, SaveResult::Saved, "ours", "theirs", "(no file)"},
        {"replace", OnConflict::Replace, SaveResult::Saved, "ours", "(no file)", "theirs"},
    };
    for (const auto &[name, onConflict, outcome, inFile, inTwin, inBackup] : rows) {
        QFile::remove(folder.Path(twin));
        QFile::remove(folder.Path(u"a.txt.bak"_s));
        QFile::remove(folder.Path(u"a.txt.bak2"_s));
        WrittenFile file = Open(u"a.txt"_s, "before");
        EXPECT_EQ(Save(u"first"_s, &file).outcome, SaveResult::Saved) << name; // with the backup of the day
        folder.Write(u"a.txt"_s, "theirs");
        EXPECT_EQ(Save(u"ours"_s, &file, onConflict).outcome, outcome) << name;
        EXPECT_EQ(folder.Read(u"a.txt"_s), inFile) << name;
        EXPECT_EQ(folder.Read(twin), inTwin) << name;
        EXPECT_EQ(folder.Read(u"a.txt.bak2"_s), inBackup) << name;
    }
    folder.Write(twin, "kept");
    const QString question = ConflictQuestion(folder.Path(u"a.txt"_s));
    EXPECT_TRUE(question.contains(u"「a（ほかの変更）2.txt」"_s) && question.contains(u"「a.txt.bak3」"_s));
    WrittenFile file = Open(u"a.txt"_s, "before");
    QFile::remove(file.path);
    EXPECT_EQ(Save(u"ours"_s, &file).outcome, SaveResult::Saved) << "a file that is gone is written again";
    WrittenFile fresh = NewWrittenFile(folder.Path());
    folder.Write(QFileInfo(fresh.path).fileName(), "theirs");
    EXPECT_EQ(Save(u"ours"_s, &fresh).outcome, SaveResult::Conflict) << "the name is taken meanwhile";
    EXPECT_EQ(QFileInfo(NewWrittenFile(folder.Path()).path).fileName(), u"新しい学習ファイル2.txt"_s);
}

TEST_F(Drafts, VanishedFolder_LeavesTheDraftQuestionUnanswered)
{
    WrittenFile file{.path = folder.Path(u"gone/a.txt"_s), .digest = {}};
    const SaveResult failed = Save(u"a"_s, &file);
    EXPECT_EQ(failed.outcome, SaveResult::Failed);
    EXPECT_TRUE(NotSavedMessage(failed.fault).startsWith(u"保存できません。書いたものはこの画面に残っています。"_s));
    EXPECT_TRUE(WriteDraft(u"a"_s, file));
}

TEST_F(Drafts, Draft_ComesBackUntilItIsSaved)
{
    const QString unsaved = u"東京😀\n[a\n"_s;
    WrittenFile file = Open(u"a.txt"_s, "a\r\n");
    Draft draft;
    EXPECT_FALSE(ReadDraft(file.path, &draft));
    EXPECT_FALSE(WriteDraft(unsaved, file));
    QFile own(folder.Write(u"own.txt"_s, "x"));
    EXPECT_TRUE(own.setPermissions(QFile::ReadOwner | QFile::WriteOwner)); // as far as the system has such things
    EXPECT_EQ(QFile::permissions(folder.Path(u"a.txt.draft"_s)), own.permissions());
    own.remove();
    ASSERT_TRUE(ReadDraft(file.path, &draft));
    EXPECT_EQ(draft.text, unsaved);
    EXPECT_TRUE(HasUnsavedText(draft, text));
    EXPECT_FALSE(HasUnsavedText(draft, unsaved));
    EXPECT_FALSE(DraftQuestion(draft, file).contains(u"ほかで変更"_s));

    WrittenFile changed = Open(u"a.txt"_s, "b\r\n");
    EXPECT_TRUE(DraftQuestion(draft, changed).contains(u"ほかで変更"_s));
    TakeDraft(draft, &changed);
    EXPECT_EQ(Save(u"c\n"_s, &changed).outcome, SaveResult::Conflict) << "not the file that it was made from";
    EXPECT_EQ(Save(u"c\n"_s, &changed, OnConflict::KeepBoth).outcome, SaveResult::Saved);
    EXPECT_EQ(Files(), QStringList({u"a.txt"_s, u"a（ほかの変更）.txt"_s})) << "a saved text has no draft";
    EXPECT_TRUE(RemoveDraft(file.path));
}

TEST_F(Drafts, DraftOfANewText_IsOfferedAndNotMixedWithAnother)
{
    const auto newFile = [this] { return QFileInfo(NewWrittenFile(folder.Path()).path).fileName(); };
    const auto freshFile = [this] { return QFileInfo(FreshWrittenFile(folder.Path()).path).fileName(); };
    EXPECT_EQ(newFile(), u"新しい学習ファイル.txt"_s);
    EXPECT_EQ(freshFile(), newFile());
    EXPECT_FALSE(WriteDraft(u"typed"_s, NewWrittenFile(folder.Path())));
    EXPECT_EQ(newFile(), u"新しい学習ファイル.txt"_s) << "offered";
    EXPECT_EQ(freshFile(), u"新しい学習ファイル2.txt"_s);
    EXPECT_FALSE(WriteDraft(u"pasted"_s, FreshWrittenFile(folder.Path())));
    folder.Write(u"新しい学習ファイル.txt"_s, "saved");
    EXPECT_EQ(newFile(), u"新しい学習ファイル2.txt"_s) << "the other one is offered too";
}

TEST_F(Drafts, DamagedDraft_IsNone)
{
    const QByteArray digest = DigestOf("a");
    const Rows<const char *, QByteArray, bool> rows = {
        {"of a new file", "Kotoban draft 1\n\ntext", true},
        {"of a file", "Kotoban draft 1\n" + digest + "\ntext", true},
        {"without text", "Kotoban draft 1\n\n", true},
        {"other heading", "Kotoban draft 2\n\ntext", false},
        {"cut in the heading", "Kotoban dra", false},
        {"cut in the digest", "Kotoban draft 1\n" + digest.chopped(1), false},
        {"other digest", "Kotoban draft 1\nabc\ntext", false},
        {"no UTF-8", "Kotoban draft 1\n\n\xE6\x9D", false},
        {"no text", QByteArray("Kotoban draft 1\n\na\0b", 20), false},
        {"CR", "Kotoban draft 1\n\na\r\nb", false},
        {"too large", "Kotoban draft 1\n\n" + QByteArray(MaxDraftBytes, 'a'), false},
    };
    for (const auto &[name, bytes, isDraft] : rows) {
        folder.Write(u"a.txt.draft"_s, bytes);
        Draft draft;
        EXPECT_EQ(ReadDraft(folder.Path(u"a.txt"_s), &draft), isDraft) << name;
        EXPECT_EQ(folder.Read(u"a.txt.draft"_s), bytes) << name;
    }
    EXPECT_TRUE(WriteDraft(QString(MaxDraftBytes, u'a'), {.path = folder.Path(u"b.txt"_s), .digest = {}}));
}
