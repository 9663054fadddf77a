// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "base/modDateText.h"
#include "base/modFile.h"
#include "files/modHandOut.h"
#include "files/modStudyFolder.h"
#include "files/modTakeFiles.h"
#include "records/modHardNote.h"
#include "store/modDB_SQLite.h"
#include "support/RecordingServices.h"
#include "support/Rows.h"
#include "support/TestFiles.h"
#include "write/modDraft.h"

#include <QDeadlineTimer>

#include <filesystem>
#include <gtest/gtest.h>
#include <system_error>

using namespace Qt::Literals::StringLiterals;

TEST(StudyFolder, FileChanged_IsUncheckedAfterRefresh)
{
    const TestFolder folder;
    for (const QString &name : {u"a.txt"_s, u"漢.TXT"_s, u"B.txt"_s, u"note.doc"_s})
        folder.WriteStudyFile(name, {u"[ok]"_s});
    folder.MakeFolder(u"folder.txt"_s);
    StudyFolder files(folder.Path());
    files.Refresh();
    EXPECT_EQ(files.Names(), QStringList({u"a.txt"_s, u"B.txt"_s, u"漢.TXT"_s}));
    for (const QString &name : files.Names()) {
        EXPECT_FALSE(files.IsChecked(name));
        files.Check(name);
        EXPECT_EQ(files.Facts(name).remarks, QString());
        EXPECT_EQ(files.Facts(name).blanks, 1);
    }

    folder.WriteStudyFile(u"a.txt"_s, {u"[now wrong"_s});
    EXPECT_TRUE(files.IsChecked(u"a.txt"_s)) << "remembered until the folder is listed again";
    files.Refresh();
    EXPECT_TRUE(files.IsChecked(u"B.txt"_s));
    EXPECT_FALSE(files.IsChecked(u"a.txt"_s));
    files.Check(u"a.txt"_s);
    EXPECT_EQ(files.Facts(u"a.txt"_s).remarks, u"1行[ ]指定異常"_s);
    EXPECT_EQ(files.Facts(u"a.txt"_s).blanks, 0);
    QFile sameSize(folder.WriteStudyFile(u"a.txt"_s, {u"[is right]"_s}));
    ASSERT_TRUE(sameSize.open(QIODevice::ReadWrite));
    ASSERT_TRUE(sameSize.setFileTime(QDateTime(QDate(2024, 3, 5), QTime(9, 0)), QFileDevice::FileModificationTime));
    sameSize.close();
    files.Refresh();
    EXPECT_FALSE(files.IsChecked(u"a.txt"_s)) << "changed without a change of size";
    files.Check(u"a.txt"_s);
    sameSize.remove();
    files.Refresh();
    EXPECT_FALSE(files.IsChecked(u"a.txt"_s)) << "gone";
}

TEST(StudyFolder, Refresh_SortsNaturallyWithPrintableCopiesLast)
{
    const TestFolder folder;
    const QStringList sorted = {
        u"chapter 2.txt"_s,  u"Chapter 10.txt"_s,   u"はじめに.txt"_s,     u"英単語入門.txt"_s, u"図で覚える理科.txt"_s,
        u"第２回.txt"_s,     u"第003回.txt"_s,      u"第10回.txt"_s,       u"第100回.txt"_s,    u"日本史年表.txt"_s,
        u"理科の基礎.txt"_s, u"第2回_印刷用.txt"_s, u"第10回_印刷用.txt"_s};
    for (const QString &name : sorted)
        folder.Write(name, "");
    StudyFolder files(folder.Path());
    files.Refresh();
    EXPECT_EQ(files.Names(), sorted);
}

TEST(StudyFolder, FileStudiedLast_IsFoundByNameOrOldTitle)
{
    const TestFolder folder;
    for (const QString &name : {u"w.txt"_s, u"w.2.txt"_s, u"v.b.txt"_s})
        folder.Write(name, "");
    StudyFolder files(folder.Path());
    files.Refresh();
    const Rows<QString, QString> rows = {{u"w.txt"_s, u"w.txt"_s}, {u"w.2.txt"_s, u"w.2.txt"_s},
                                         {u"v"_s, u"v.b.txt"_s},   {u"w.3.txt"_s, u""_s},
                                         {u"x"_s, u""_s},          {u""_s, u""_s}};
    for (const auto &[recorded, name] : rows)
        EXPECT_EQ(files.NameOf(recorded), name) << recorded.toStdString();
}

TEST(MatchesFilter, AllWordsPresent_MatchesInAnyOrderCaseAndWidth)
{
    const Rows<QString, QString, bool> rows = {
        {u"英単語 第10回.txt"_s, u"第10回 英"_s, true},
        {u"英単語 第10回.txt"_s, u"第10回　仏"_s, false},
        {u"Unit ３.txt"_s, u"unit3"_s, false},
        {u"Unit ３.txt"_s, u"UNIT 3"_s, true},
        {u"カ\u3099イド.txt"_s, u"ｶﾞｲﾄﾞ"_s, true}, // decomposed, as in file names from a Mac
        {u"a.txt"_s, u" 　"_s, true},
    };
    for (const auto &[name, wanted, isFound] : rows)
        EXPECT_EQ(MatchesFilter(name, wanted), isFound) << name.toStdString() << " / " << wanted.toStdString();
}

TEST(TakeFiles, MixedDrop_EachFileHasItsOwnFate)
{
    const TestFolder elsewhere;
    const TestFolder folder;
    const QString fresh = elsewhere.Write(u"new.TXT"_s, "new");
    const QString known = elsewhere.Write(u"known.png"_s, "newer");
    const QString twin = elsewhere.Write(u"sub/New.txt"_s, "not this one");
    const QString foreign = elsewhere.Write(u"sheet.xlsx"_s, "x");
    const QString table = elsewhere.Write(u"words.CSV"_s, "a,b");
    const QString inFolder = elsewhere.Write(u"folder.txt/a.txt"_s, "a");
    const QString tableInFolder = elsewhere.Write(u"folder.txt/b.tsv"_s, "a\tb");
    elsewhere.Write(u"folder.txt/.hidden.txt"_s, "");
    elsewhere.Write(u"folder.txt/below/deep.txt"_s, "not this one");
    QFile large(elsewhere.Write(u"folder.txt/large.txt"_s, ""));
    ASSERT_TRUE(large.resize(MaxFileBytes + 1)) << "sparse";
    folder.Write(u"known.png"_s, "known");
    folder.Write(u"known.png.bak"_s, "oldest");
    const QString own = folder.Write(u"own.txt"_s, "own");
    const FilesToTake files = SortFilesToTake(
        {fresh, known, twin, foreign, table, elsewhere.Path(u"folder.txt"_s), own}, folder.Path(u"."_s));
    EXPECT_EQ(files.fresh, QStringList({fresh, inFolder}));
    EXPECT_EQ(files.replaced, QStringList(known));
    EXPECT_EQ(files.tables, QStringList({table, tableInFolder}));
    EXPECT_EQ(files.foreign, QStringList(foreign));
    EXPECT_EQ(files.tooLarge, QStringList(large.fileName()));
    EXPECT_EQ(files.twins, QStringList(twin));
    EXPECT_EQ(files.present, QStringList(own));
    EXPECT_EQ(files.nested, QStringList(elsewhere.Path(u"folder.txt/below"_s)));

    folder.MakeFolder(u"new.TXT"_s); // takes the place of the file
    FileTaking taking({fresh, known, elsewhere.Path(u"gone.txt"_s), inFolder, foreign}, folder.Path());
    for (int file = 1; file <= 4; ++file)
        EXPECT_TRUE(taking.GoOn(QDeadlineTimer(0))) << "one file at a time";
    EXPECT_EQ(taking.Copied(), QStringList({u"known.png"_s, u"a.txt"_s}));
    EXPECT_EQ(folder.Read(u"known.png"_s), "newer");
    EXPECT_EQ(folder.Read(u"known.png.bak"_s), "oldest");
    EXPECT_EQ(folder.Read(u"known.png.bak2"_s), "known");
    ASSERT_EQ(taking.Failures().size(), 2);
    EXPECT_TRUE(taking.Failures()[0].startsWith(u"new.TXT：")) << taking.Failures()[0].toStdString();
    EXPECT_TRUE(taking.Failures()[1].startsWith(u"gone.txt：")) << taking.Failures()[1].toStdString();
    EXPECT_EQ(QDir(folder.Path()).entryList(QDir::Files).size(), 5) << "nothing else is left behind";

    QString message = TakenMessage(files, taking);
    for (const QString &failure : taking.Failures())
        message.remove(failure.section(u'：', 1));
    EXPECT_EQ(message, u"2個のファイルを学習ファイルのフォルダにコピーしました。\r\n  known.png\r\n  a.txt\r\n\r\n"
                       u"置き換える前のファイルは，次の名前で残しました。\r\n  known.png → known.png.bak2\r\n\r\n"
                       u"中止したため，コピーしませんでした。\r\n  sheet.xlsx\r\n\r\n"
                       u"コピーできません。\r\n  new.TXT：\r\n  gone.txt：\r\n\r\n"
                       u"64MBを超えるため，コピーしません。\r\n  large.txt\r\n\r\n"
                       u"学習ファイル（.txt）と画像（.png .jpg .jpeg .gif .bmp）ではないため，コピーしません。"
                       u"\r\n  sheet.xlsx\r\n\r\n"
                       u"同じ名前のファイルが二つ以上あるため，初めの一つだけにします。\r\n  New.txt\r\n\r\n"
                       u"もう学習ファイルのフォルダにあるファイルです。\r\n  own.txt\r\n\r\n"
                       u"フォルダの中のフォルダは，コピーしません。\r\n  below\r\n\r\n"
                       u"次の表から，学習ファイルを作りますか？\r\n  words.CSV\r\n  b.tsv"_s);
    EXPECT_EQ(TakenMessage({}, FileTaking({}, QString())), u"コピーしたファイルはありません。"_s);
    EXPECT_TRUE(ReplaceTakenQuestion(QStringList(12, known)).contains(u"\r\n  known.png\r\n  ほかに2個\r\n"));
}

TEST(TakeFiles, LinkInDroppedFolder_IsCopiedOnlyFromThatFolder)
{
    const TestFolder elsewhere;
    const TestFolder dropped;
    const TestFolder folder;
    const QString real = dropped.Write(u"a\u2028.txt"_s, "a");
    const QString secret = elsewhere.Write(u"secret.txt"_s, "secret");
    const auto link = [](const QString &target, const QString &path) {
        std::error_code fault;
        std::filesystem::create_symlink(QFileInfo(target).filesystemFilePath(), QFileInfo(path).filesystemFilePath(),
                                        fault);
        return !fault;
    };
    if (!link(real, dropped.Path(u"b.txt"_s)) || !link(secret, dropped.Path(u"c.txt"_s)) ||
        !link(u"gone"_s, dropped.Path(u"d.txt"_s)))
        GTEST_SKIP() << "no links here";
    const FilesToTake files = SortFilesToTake({dropped.Path()}, folder.Path());
    EXPECT_EQ(files.fresh, QStringList({real, dropped.Path(u"b.txt"_s)}));
    EXPECT_EQ(files.linked, QStringList({dropped.Path(u"c.txt"_s), dropped.Path(u"d.txt"_s)}));
    EXPECT_TRUE(files.LeavesOut());
    EXPECT_EQ(SortFilesToTake({dropped.Path(u"c.txt"_s)}, folder.Path()).fresh.size(), 1) << "dropped by itself";
    FileTaking taking(files.fresh, folder.Path());
    while (taking.GoOn(QDeadlineTimer(0)))
        continue;
    EXPECT_EQ(TakenMessage(files, taking),
              u"2個のファイルを学習ファイルのフォルダにコピーしました。\r\n  a .txt\r\n  b.txt\r\n\r\n"
              u"ほかのフォルダを指すリンクのため，コピーしません。\r\n  c.txt\r\n  d.txt"_s);
}

TEST(TakeFiles, TooLargeOldFile_IsNotReplaced)
{
    const TestFolder elsewhere;
    const TestFolder folder;
    QFile large(folder.Write(u"a.txt"_s, ""));
    ASSERT_TRUE(large.resize(MaxFileBytes + 1)) << "sparse";
    FileTaking taking({elsewhere.Write(u"a.txt"_s, "new")}, folder.Path());
    EXPECT_FALSE(taking.GoOn(QDeadlineTimer(QDeadlineTimer::Forever)));
    EXPECT_EQ(taking.Failures(), QStringList(u"a.txt：元のファイルが大きすぎるので，置き換えません。"_s));
    EXPECT_EQ(large.size(), MaxFileBytes + 1);
    EXPECT_EQ(QDir(folder.Path()).entryList(QDir::Files).size(), 1);
}

TEST(HandOut, StudyFiles_AreHandedOutWithTheirPicturesAndNothingElse)
{
    const TestFolder folder;
    const TestFolder pupils;
    folder.Write(u"txt/細胞.PNG"_s, "picture");
    folder.Write(u"txt/other.png"_s, "of no file");
    for (const QString &beside : {u"a.txt.bak"_s, u"a.txt.draft"_s})
        folder.Write(u"txt/"_s + beside, "mine");
    QStringList paths;
    paths += folder.WriteStudyFile(u"txt/a.txt"_s, {u"｢細胞｣ [a] ｢細胞｣"_s, u"｢ない｣ [｢other｣]"_s});
    paths += folder.WriteStudyFile(u"txt/b.txt"_s, {u"｢細胞｣ [b]"_s});
    paths += folder.WriteStudyFile(u"txt/b_印刷用.txt"_s, {u"_"_s});
    paths += folder.WriteStudyFile(u"txt/bad.txt"_s, {u"[b"_s});
    HandOutSearch search(paths, {u"苦手帳"_s});
    while (search.GoOn(QDeadlineTimer(0)))
        ;
    const HandOut handOut = search.Take();
    EXPECT_EQ(handOut.paths, QStringList({paths[0], paths[1], QDir::toNativeSeparators(folder.Path(u"txt/細胞.PNG"_s)),
                                          QDir::toNativeSeparators(folder.Path(u"txt/other.png"_s))}));
    EXPECT_EQ(handOut.others, QStringList({u"苦手帳"_s, u"b_印刷用.txt"_s}));
    EXPECT_EQ(handOut.refused, QStringList(u"bad.txt：1行[ ]指定異常　「書く」で直せます"_s));
    EXPECT_EQ(handOut.missing, QStringList(u"a.txt 2行目：｢ない｣"_s));

    pupils.Write(u"a.txt"_s, "other");
    pupils.Write(u"細胞.PNG"_s, "picture");
    FilesToTake files = SortFilesToTake(handOut.paths, pupils.Path());
    EXPECT_TRUE(IsInFolder(handOut.paths[2], pupils.Path()));
    EXPECT_FALSE(IsInFolder(handOut.paths[0], pupils.Path()));
    FileTaking taking({paths[0]}, pupils.Path(), OldFiles::Replace);
    EXPECT_FALSE(taking.GoOn(QDeadlineTimer(QDeadlineTimer::Forever)));
    EXPECT_EQ(QDir(pupils.Path()).entryList(QDir::Files), QStringList({u"a.txt"_s, u"細胞.PNG"_s})) << "no .bak";
    EXPECT_EQ(pupils.Read(u"a.txt"_s), folder.Read(u"txt/a.txt"_s));
}

TEST(HandOut, PictureThatIsALinkToAnotherFolder_IsLeftOut)
{
    const TestFolder folder;
    folder.MakeFolder(u"txt"_s);
    const auto link = [&folder](const QString &target, const QString &name) {
        std::error_code error;
        std::filesystem::create_symlink(target.toStdU16String(), folder.Path(name).toStdU16String(), error);
        return !error;
    };
    folder.Write(u"secret"_s, "password");
    folder.Write(u"txt/here.png"_s, "picture");
    if (!link(folder.Path(u"secret"_s), u"txt/away.png"_s) || !link(u"here.png"_s, u"txt/same.png"_s) ||
        !link(folder.Path(u"txt"_s), u"folder"_s))
        GTEST_SKIP() << "links cannot be made here";
    folder.WriteStudyFile(u"txt/a.txt"_s, {u"｢away｣ ｢same｣ ｢away｣"_s});
    const QString path = folder.Path(u"folder/a.txt"_s);
    HandOutSearch search({path}, {});
    search.GoOn(QDeadlineTimer(QDeadlineTimer::Forever));
    const HandOut handOut = search.Take();
    EXPECT_EQ(handOut.paths, QStringList({path, QDir::toNativeSeparators(folder.Path(u"folder/same.png"_s))}));
    EXPECT_EQ(handOut.linked, QStringList(u"away.png"_s));
}

TEST(CheckStudyFile, Samples_HaveBlanksAndNoRemarks)
{
    StudyFolder samples(QStringLiteral(SAMPLE_FOLDER));
    samples.Refresh();
    EXPECT_TRUE(samples.Names().contains(u"はじめに.txt"_s)) << "a new user's first file";
    for (const QString &name : samples.Names()) {
        samples.Check(name);
        EXPECT_EQ(samples.Facts(name).remarks, QString()) << name.toStdString();
        EXPECT_GT(samples.Facts(name).blanks, 0) << name.toStdString();
    }
}

TEST(CheckStudyFile, EachFault_HasItsRemark)
{
    const Rows<QString, QByteArray, QString> rows = {
        {u"euc.txt"_s, "\xC6\xFC\xCB\xDC\xB8\xEC\xA4\xCE\r\n", u"文字コード＝EUC"_s},
        {u"long.txt"_s, QByteArray(101, 'x'), u"1行目 100バイト超過"_s},
        {u"one bracket.txt"_s, "ok\r\n[a\r\n", u"2行[ ]指定異常"_s},
        {u"brackets reversed.txt"_s, "]a[", u"1行[ ]指定異常"_s},
        {u"blank beside full-width.txt"_s, "[a] \x81\x6D\x62\x81\x6E", QString()},
        {u"no bracket.txt"_s, "a", u"空欄なし"_s},
        {u"full-width only.txt"_s, "\x81\x6D\x62\x81\x6E", u"空欄なし（［ ］は全角）"_s},
        {u"quote in the t'itle.txt"_s, "[a]", u"学習記録なし（名前に '）"_s},
        {u"two remark's.txt"_s, "a", u"空欄なし，学習記録なし（名前に '）"_s},
        {u"quote after.the title'.txt"_s, "[a]", QString()},
        {u"control\x7F.txt"_s, "[a]", u"名前に制御文字"_s},
        {u"line\u2028separator.txt"_s, "[a]", u"名前に制御文字"_s},
        {u"turned\u202Etxt.txt"_s, "[a]", u"名前に制御文字"_s},
        {u"isolated\u2066.txt"_s, "[a]", u"名前に制御文字"_s},
        {u"mark\u200F.txt"_s, "[a]", u"名前に制御文字"_s},
    };
    const TestFolder folder;
    for (const auto &[name, bytes, remarks] : rows)
        EXPECT_EQ(CheckStudyFile(folder.Write(name, bytes)).remarks, remarks) << name.toStdString();
    EXPECT_EQ(CheckStudyFile(folder.Path(u"gone.txt"_s)).remarks, u"読み込み不可"_s);
    QFile large(folder.Write(u"large.txt"_s, ""));
    ASSERT_TRUE(large.resize(MaxFileBytes + 1)) << "cannot create a sparse file";
    EXPECT_EQ(CheckStudyFile(large.fileName()).remarks, u"64MB超過"_s);
}

TEST(CheckStudyFile, FaultThatCanBeMended_HasThatRemedy)
{
    const QString mixed = u"［東京］"_s.repeated(10) + u"\r\n[信濃川]\r\n"_s;
    const QString breakable = QString(40, u'あ') + u'、' + QString(40, u'い');
    const Rows<const char *, QByteArray, Remedy, qsizetype, bool> rows = {
        {"nothing to mend", "[a]", Remedy::None, 0, true},
        {"no blank", "a", Remedy::None, 0, true},
        {"both kinds of brackets", ToCodePage932(mixed), Remedy::Mend, 10, true},
        {"full-width brackets", ToCodePage932(u"［a］"), Remedy::Mend, 1, true},
        {"full-width brackets that would not pair", ToCodePage932(u"[b] ［a"), Remedy::None, 0, true},
        {"other encoding", u"あ"_s.toUtf8(), Remedy::Mend, 0, false},
        {"other encoding, with NUL bytes", QByteArray("\xFF\xFE[\0a\0]\0", 8), Remedy::Mend, 0, false},
        {"unknown encoding", "\x82\xFF\x80", Remedy::None, 0, false},
        {"long line", ToCodePage932(breakable), Remedy::Mend, 0, false},
        {"long line without a place to break", QByteArray(101, 'x'), Remedy::Write, 0, false},
        {"a bracket too many", "[a", Remedy::Write, 0, false},
        {"one bracket of each kind", ToCodePage932(u"[a］"), Remedy::Mend, 0, false},
        {"a bracket too many before an endless line", "[a\n" + QByteArray(MaxWriteLine + 1, 'x'), Remedy::Edit, 0,
         false},
        {"half-width kana that read as EUC", ToCodePage932(u"[ﾈｺ] ﾈｺｶﾞｲﾙ"), Remedy::Choose, 0, false},
        {"no text, with long lines", ToCodePage932(breakable) + '\0', Remedy::None, 0, false},
        {"no text, with a bracket too many", QByteArray("[a\0", 3), Remedy::None, 0, false},
        {"no text, in UTF-8", u"あ"_s.toUtf8() + '\0', Remedy::None, 0, false},
        {"no text, in UTF-16", QByteArray("\xFF\xFE\0\0", 4), Remedy::None, 0, false},
        {"no text, with full-width brackets", ToCodePage932(u"［a］") + '\0', Remedy::None, 1, true},
    };
    const TestFolder folder;
    for (const auto &[name, bytes, remedy, fullWidth, canBeOpened] : rows) {
        const StudyFileFacts facts = CheckStudyFile(folder.Write(u"a.txt"_s, bytes));
        EXPECT_EQ(int(facts.remedy), int(remedy)) << name << facts.remarks.toStdString();
        EXPECT_EQ(facts.fullWidth, fullWidth) << name;
        EXPECT_EQ(facts.canBeOpened, canBeOpened) << name;
    }
}

TEST(SelectionRefusal, PrintableCopy_IsAcceptedOnlyForStudying)
{
    EXPECT_TRUE(SelectionRefusal(u"a_印刷用.txt"_s, false).isEmpty());
    EXPECT_FALSE(SelectionRefusal(u"a_印刷用.txt"_s, true).isEmpty());
    for (const bool isForPrinting : {false, true})
        EXPECT_EQ(SelectionRefusal(HardNoteTitle.toString(), isForPrinting), u"ファイルを一つ選択してください。"_s);
}
