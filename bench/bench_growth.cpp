// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Feeds everything that reads, checks or writes what strangers may have made with the inputs that are worst for it, in
// two sizes. bench/growth runs this under callgrind and compares the numbers of instructions.
//
//     bench_growth SIZE [WORDS]
//
// SIZE is that of the smaller input in bytes; the larger one has ten times as many. Each step has a dump of its own,
// named "SUBJECT|INPUT|SIZE". With WORDS, only subjects with these in their names are run.
#include "app/modUserList.h"
#include "base/modCodePage.h"
#include "exchange/modLineCheck.h"
#include "exchange/modPrintableCopy.h"
#include "exchange/modReadTable.h"
#include "exchange/modStudyFromTable.h"
#include "exchange/modStudyFromText.h"
#include "files/modStudyFolder.h"
#include "files/modTakeFiles.h"
#include "platform/modCommandLine.h"
#include "platform/modProfile.h"
#include "records/modHardNote.h"
#include "records/modPlaceList.h"
#include "search/modSearch.h"
#include "settings/modEditor.h"
#include "support/Pieces.h"
#include "support/TestFiles.h"
#include "text/modCheckText.h"
#include "text/modDecodeText.h"
#include "text/modPictureFile.h"
#include "text/modPictureName.h"
#include "text/modReadText.h"
#include "write/modCleanText.h"
#include "write/modDraft.h"
#include "write/modPen.h"

#include <QDeadlineTimer>

#include <cstdio>
#include <functional>
#include <numeric>
#include <tuple>
#include <valgrind/callgrind.h>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype WarmUpBytes = 1'000;

/// An input of any size: a beginning, repetitions of a pattern, an end. "<n>" in the pattern is the number of the
/// repetition, from 1.
struct Input
{
    QByteArray pattern;
    QByteArray head{};
    QByteArray tail{};
    QByteArray secondHalf{}; ///< the pattern of the second half, if it is another one

    QByteArray OfSize(qsizetype size) const
    {
        QByteArray bytes = head;
        for (int number = 1; bytes.size() < size - tail.size(); ++number) {
            const bool isSecond = !secondHalf.isEmpty() && bytes.size() >= size / 2;
            bytes += QByteArray(isSecond ? secondHalf : pattern).replace("<n>", QByteArray::number(number));
        }
        return bytes + tail;
    }

    QByteArray Name() const
    {
        const auto shown = [](const QByteArray &part) {
            return QString::fromLatin1(part).simplified().isEmpty() ? part.toPercentEncoding()
                                                                    : part.toPercentEncoding(" []{}<>()/\\:=+-'\"#&,.");
        };
        QByteArray name = shown(pattern) + " ...";
        if (!secondHalf.isEmpty())
            name += " " + shown(secondHalf) + " ...";
        if (!head.isEmpty())
            name.prepend(shown(head.last(qMin(head.size(), qsizetype(20)))) + " ");
        return tail.isEmpty() ? name : name + " " + shown(tail);
    }
};

using Inputs = QList<Input>;

/// An input for each pattern.
Inputs Each(const QByteArrayList &patterns, const QByteArray &head = {}, const QByteArray &tail = {})
{
    Inputs inputs;
    for (const QByteArray &pattern : patterns)
        inputs.push_back({pattern, head, tail});
    return inputs;
}

using Step = std::function<void()>;

/// What is measured: a step prepared for the bytes of an input.
struct Subject
{
    QByteArray name;
    Inputs inputs;
    std::function<Step(const QByteArray &bytes)> prepare;
};

const TestFolder &Folder()
{
    static const TestFolder folder;
    return folder;
}

/// A text with a NUL character is two: before it and after it.
std::pair<QByteArray, QByteArray> TwoParts(const QByteArray &bytes)
{
    const qsizetype at = bytes.indexOf('\0');
    return {bytes.first(at), bytes.sliced(at + 1)};
}

DisplayText TextOf(const QByteArray &bytes)
{
    StudyLines lines;
    ReadAllLines(bytes, ExpandTabs::Yes, &lines);
    return DisplayText(std::move(lines));
}

/// What is measured must work: a step that fails at once would show no growth.
void RequireDone(const FileFault &fault)
{
    if (fault)
        qFatal("%s: %s", qPrintable(fault.path), qPrintable(fault.reason));
}

/// The blanks of a text as marked for a user.
std::vector<int> AllBlanks(const DisplayText &text)
{
    std::vector<int> blanks(size_t(text.Blanks().Count()));
    std::iota(blanks.begin(), blanks.end(), 1);
    return blanks;
}

Inputs StudyFiles()
{
    const QByteArray manyBlanks = QByteArray("[]").repeated(MaxLineBytes / 2) + '\n';
    const QByteArray opening = "\xA2";
    const QByteArray closing = "\xA3";
    return Each({"[a]\r\n",
                 "[a<n>] b\r\n",
                 "\n",
                 "a",
                 "[",
                 "][",
                 "[]",
                 manyBlanks,
                 "[]\t[]\t[]\t[]\t[]\t[]\n",
                 "\t",
                 "\x81",
                 "\x81\n",
                 "\x82\xA0\x82\xA2\n",
                 "\xB1[\xB2]\n",
                 opening + "a.<n>" + closing + '\n',
                 opening + 'a' + closing + '\n',
                 opening + closing,
                 opening.repeated(20) + closing.repeated(20) + '\n',
                 "''=([=(],\"'''=|\n",
                 "{{[{{}]}}::[::]{{c1::[a]}}\n",
                 "<&\"[<&>]\n"}) +
           Each({"=(\n"}, "[a]\n") + Each({"[]"}, {}, "[");
}

Step ReadStudyFile(const QByteArray &bytes)
{
    return [path = Folder().Write(u"txt/a.txt"_s, bytes)] {
        StudyLines lines;
        if (!ReadStudyText(path, MaxLineBytes, &lines))
            BadPictureNamesMessage(BadPictureNames(DisplayText(std::move(lines))));
        CheckStudyFile(path);
    };
}

Step MakeSheet(const QByteArray &bytes)
{
    return [path = Folder().Write(u"txt/a.txt"_s, bytes)] {
        PrintSheet sheet;
        const QString target = Folder().Path(u"sheet.html"_s);
        for (const bool isEditionB : {false, true})
            if (!sheet.Read(path, target, {.isForTeacher = isEditionB, .isEditionB = isEditionB})) {
                sheet.LookForPictures(QDeadlineTimer(QDeadlineTimer::Forever));
                RequireDone(WriteAll(target, sheet));
            }
    };
}

Step Export(const QByteArray &bytes)
{
    return [path = Folder().Write(u"txt/a.txt"_s, bytes)] {
        for (const ExportKind kind : {ExportKind::Text, ExportKind::Anki, ExportKind::Csv}) {
            StudyExport made;
            if (!made.Read(path, kind))
                RequireDone(WriteAll(Folder().Path(u"export"_s), made));
        }
    };
}

Step MakePrintableCopy(const QByteArray &bytes)
{
    const QString path = Folder().Write(u"txt/a.txt"_s, bytes);
    const QString copyPath = PrintableCopyPath(Folder().Path(), path);
    Folder().Write(QFileInfo(copyPath).fileName(), bytes);
    return [path, copyPath] {
        PrintableCopy copy;
        if (copy.Read(path))
            return;
        copy.GoOn(QDeadlineTimer(QDeadlineTimer::Forever));
        RequireDone(WritePrintableCopy(copy.Bytes(), copyPath, JudgeOldCopy(copy.Bytes(), path, copyPath)));
    };
}

/// Writes marks for all blanks of a text, finds them again, and prints and exports only what is marked.
Step MarkAll(const QByteArray &bytes)
{
    const QString path = Folder().Write(u"txt/a.txt"_s, bytes);
    QFile::remove(Folder().Path(u"ListMark.txt"_s));
    return [path, text = std::make_shared<DisplayText>(TextOf(bytes))] {
        const MarkList marks(Folder().Path(u"ListMark.txt"_s), u"user"_s);
        RequireDone(marks.Write(u"a"_s, *text, AllBlanks(*text)));
        RequireDone(marks.Write(u"b"_s, *text, {}));
        marks.HasEntries(u"a"_s);
        PrintSheet sheet;
        const QString target = Folder().Path(u"sheet.html"_s);
        if (!sheet.Read(path, target, {.onlyHard = &marks}))
            RequireDone(WriteAll(target, sheet));
        StudyExport made;
        if (!made.Read(path, ExportKind::Csv, &marks))
            RequireDone(WriteAll(Folder().Path(u"export"_s), made));
    };
}

/// Reads any list of marks, and writes it again.
Step ReadMarks(const QByteArray &bytes)
{
    const auto [list, study] = TwoParts(bytes);
    Folder().Write(u"ListMark.txt"_s, list);
    Folder().Write(u"txt/a.txt"_s, study);
    return [text = std::make_shared<DisplayText>(TextOf(study))] {
        const MarkList marks(Folder().Path(u"ListMark.txt"_s), u"u"_s);
        std::ignore = marks.Write(u"a"_s, *text, marks.Find(u"a"_s, *text)); // some lists are not text
        HardNote note(marks, {Folder().Path(u"txt/a.txt"_s)});
        while (note.GoOn(QDeadlineTimer(QDeadlineTimer::Forever)))
            ;
        std::ignore = note.Write(Folder().Path(u"note.txt"_s));
    };
}

Step ReadPlaces(const QByteArray &bytes)
{
    Folder().Write(u"ListPlace.txt"_s, bytes);
    return [] {
        const PlaceList places(Folder().Path(u"ListPlace.txt"_s));
        places.LastUser();
        places.LastFile(u"user"_s);
        const Place place = places.Find(u"user"_s, u"a.txt"_s);
        std::ignore = places.Write(u"user"_s, u"a.txt"_s, {7, 1, u"0a"_s, place.shown});
    };
}

/// A list at its bound, a large part of which must go.
Step DropPlaces(const QByteArray &bytes)
{
    return ReadPlaces(QByteArray(MaxPlaceListBytes - bytes.size() - 2, '#') + "\r\n" + bytes);
}

Step ReadUsers(const QByteArray &bytes)
{
    Folder().Write(u"ListUserName.txt"_s, bytes);
    return [] {
        const QString path = Folder().Path(u"ListUserName.txt"_s);
        if (const QString name = u"花子"_s; !ReadUserNames(path).contains(name))
            std::ignore = AppendUserName(path, name);
    };
}

Step UseProfile(const QByteArray &bytes)
{
    Folder().Write(u"a.ini"_s, bytes);
    return [] {
        const QString path = Folder().Path(u"a.ini"_s);
        ProfileSection(path, u"setting"_s, 99).Value(u"LineSpace"_s);
        if (!WriteProfile(path, u"setting"_s, {{u"LineSpace"_s, u"5"_s}, {u"New"_s, u"5"_s}}))
            qFatal("cannot write the settings");
    };
}

void CountAll(const QByteArray &list, const DisplayText &text)
{
    const QDeadlineTimer forever(QDeadlineTimer::Forever);
    KeywordSearch search(ReadKeywordList(Folder().Write(u"KeywordList.txt"_s, list)));
    search.SetText(&text);
    search.CountOn(forever);
    const QStringList words = search.KeywordsWith(u"a"_s) + search.KeywordsWith(QString());
    if (words.isEmpty())
        return;
    const std::unique_ptr<Hits> hits = search.HitsOf(words.back(), text.LineCount() / 2);
    hits->CountOn(forever);
    hits->Next({}, true, forever);
}

/// Input: the list, and the text after a NUL character, which is repeated to the same size.
Step SearchKeywords(const QByteArray &bytes)
{
    const auto [list, line] = TwoParts(bytes);
    return [list = list, text = std::make_shared<DisplayText>(TextOf(line.repeated(list.size() / line.size())))] {
        CountAll(list, *text);
    };
}

/// A long typed text.
Step SearchText(const QByteArray &bytes)
{
    const auto [wanted, line] = TwoParts(bytes);
    return [wanted = QString::fromLatin1(wanted),
            text = std::make_shared<DisplayText>(TextOf(line.repeated(wanted.size() / line.size())))] {
        const QDeadlineTimer forever(QDeadlineTimer::Forever);
        Hits hits(text.get(), std::make_unique<PlainFinder>(wanted), 1);
        hits.CountOn(forever);
        hits.Next({}, false, forever);
    };
}

Step Detect(const QByteArray &bytes)
{
    return [bytes] {
        const CharCode code = DetectCharCode(WholeFile(bytes));
        DecodeText(bytes, code);
        DecodeText(bytes, CharCode::Jis);
        DecodeText(bytes, CharCode::Euc);
    };
}

void MakeAsOffered(StudyFromText made, bool isWanted)
{
    const QDeadlineTimer forever(QDeadlineTimer::Forever);
    made.GoOn(forever);
    made.Make(
        {.accents = isWanted ? Accents::Remove : Accents::Keep, .halvesBrackets = isWanted, .breaksLines = isWanted});
    made.GoOn(forever);
    QByteArray encoded;
    if (!made.Encode(&encoded))
        made.Report(u"a"_s, u"a"_s, QString());
}

Step Convert(const QByteArray &bytes)
{
    return [bytes, text = QString::fromUtf8(bytes)] {
        for (const bool isWanted : {false, true}) {
            MakeAsOffered(StudyFromText(text), isWanted);
            MakeAsOffered(StudyFromText(bytes), isWanted);
        }
    };
}

/// A text as pasted and as typed, and as a file that is opened, changed at both ends and saved.
Step WriteText(const QByteArray &bytes)
{
    const QString path = Folder().Write(u"written.txt"_s, bytes);
    return [path, text = QString::fromUtf8(bytes)] {
        CleanedPaste(text, WithoutEquivalent::Geta);
        JoinedLines(text);
        Mended(text);
        QString refusal;
        LinesOfCells(text, &refusal);
        for (const QStringView line : QStringView(text).split(u'\n')) {
            ProblemsOfLine(line, [](const QString &) { return false; });
            WithEdits(line, Stroke(line, {0, line.size()}));
            WordAtCursor(line, line.size());
            TypeIntoLine(line, line.size() / 2, u"["_s);
        }
        WrittenFile file;
        QString opened;
        bool isChanged = false;
        if (!OpenToWrite(path, &file, &opened, &isChanged).isEmpty())
            return;
        const QString changed = WithUnwritableReplaced(u"a\n"_s + opened + u"\na"_s, file);
        EncodeDraft(changed, file);
        RequireDone(WriteDraft(changed, file));
        Draft draft;
        ReadDraft(path, &draft);
    };
}

void MakeFromTable(const QByteArray &bytes, TableReading reading)
{
    Table table;
    if (ReadTableBytes(bytes, &reading, &table))
        return;
    TableOptions options;
    options.columns = ColumnsByDefault(table);
    options.skipsFirstRow = GuessHeading(table);
    PreviewHint(table, options, PreviewText(table, options));
    const TableStudyText study = StudyTextOf(table, options);
    TableRemarks(table, study);
    MakeAsOffered(StudyFromText(study.text, study.rowNumbers), true);
}

Step ReadTables(const QByteArray &bytes)
{
    return [bytes] {
        MakeFromTable(bytes, {});
        MakeFromTable(bytes, {CharCode::Utf8, u"\t"_s});
        MakeFromTable(bytes, {CharCode::Utf8, u",,"_s});
        WithPictureNames(QString::fromUtf8(bytes), [](const QString &file) { return file; });
    };
}

Step ParseLine(const QByteArray &bytes)
{
    return [line = QString::fromLatin1(bytes)] { ParseCommandLine(line, [](const QString &) { return false; }); };
}

Step JudgeEditor(const QByteArray &bytes)
{
    return [line = QString::fromLatin1(bytes)] {
        EditorRefusal(EditorCommandLine(line, line, 1), Folder().Path());
        EditorRefusal(EditorCommandLine(u'"' + line + u'"', line, 1), Folder().Path());
    };
}

Step JudgePicture(const QByteArray &bytes)
{
    return [bytes] {
        PictureFormatOf(bytes);
        for (const char *const format : {"png", "gif", "bmp"})
            ClaimOfPicture(bytes, format);
        JpegScans(bytes);
    };
}

Step GuardCells(const QByteArray &bytes)
{
    return [cell = QString::fromLatin1(bytes)] {
        const QString guarded = GuardedCell(cell);
        Table table;
        int errorLine = 0;
        ReadTable(guarded, TableFormat{.separator = u","_s}, &table, &errorLine);
    };
}

/// Lines as dropped paths, none of which exists.
Step SortDropped(const QByteArray &bytes)
{
    return [paths = QString::fromLatin1(bytes).split(u'\n', Qt::SkipEmptyParts)] {
        const FilesToTake files = SortFilesToTake(paths, Folder().Path());
        TakenMessage(files, FileTaking({}, Folder().Path()));
    };
}

/// Lines as names of study files.
Step ListFiles(const QByteArray &bytes)
{
    const QString name = u"listed"_s;
    QDir(Folder().Path(name)).removeRecursively();
    for (const QByteArray &file : bytes.split('\n'))
        Folder().Write(name + u'/' + QString::fromUtf8(file) + u".txt"_s, "[a]\n");
    return [path = Folder().Path(name)] {
        StudyFolder folder(path);
        folder.Refresh();
        folder.Refresh();
        folder.NameOf(u"none"_s);
        FolderNote(folder);
    };
}

std::vector<Subject> Subjects()
{
    const QByteArray nul(1, '\0');
    const QByteArray html = "#separator:tab\n#html:true\n";
    const QByteArray kana = "\x82\xA0";
    const QByteArray section = "[setting]\n";
    return {
        {"reading and checking a study file", StudyFiles(), ReadStudyFile},
        {"its sheet", StudyFiles(), MakeSheet},
        {"its three exports", StudyFiles(), Export},
        {"its printable copy", StudyFiles(), MakePrintableCopy},
        {"marking all blanks, finding the marks, printing and exporting them",
         Each({"[a]\r\n", "[a<n>]\r\n", "[]\n", "[a] b\na [b]\n[a b]\n[] a\n", "[a][b][c][d][e][f]\n"}), MarkAll},
        {"reading and writing any list of marks",
         Each({"u\ta\t[a]\t1\n", "u\ta\t[a]\t1\t<n>\n", "u\ta\t[a<n>]\t1\n", "v\ta\t[a<n>]\t1\n", "\n", "\t", "\x81"},
              {}, nul + "[a]\n"),
         ReadMarks},
        {"reading and writing any list of places",
         Each({"user\ta\t7\n", "user<n>\ta\t7\n", "\n", "\t", "a", "+-\x81\n"}), ReadPlaces},
        {"writing a list of places at its bound", Each({"user\ta\t7\r\n", "user<n>\tb\t7\r\n"}), DropPlaces},
        {"reading the user list and adding a name", Each({"\n", "a", "a<n>\r\n", "\x81"}), ReadUsers},
        {"reading and writing settings",
         Each({"a=1\r\n", "[setting]", "[a\n"}) + Each({"a=1\r\n", "=\n", "\n", "LineSpace", "\r"}, section) +
             Each({"x", " "}, section + "LineSpace="),
         UseProfile},
        {"reading a keyword list and counting its hits in a text",
         Each({kana + kana + "<n>\n"}, {}, nul + kana.repeated(8) + '\n') + Each({"1<n>\n"}, {}, nul + "1111111111\n") +
             Each({"- <n>\n"}, {}, nul + "- - - - - - - - - -\n") +
             Each({"aing\n", "a\n\n", " ", "a"}, {}, nul + "aing aed as ains\n"),
         SearchKeywords},
        {"searching for a text as long as the file",
         Each({"a"}, {}, nul + QByteArray(MaxLineBytes, 'a') + '\n') + Each({"ab"}, {}, nul + "abababab\n"),
         SearchText},
        {"detecting an encoding and decoding",
         Each({"a", "+", "+AAAA", "+AAAA-", "+A-+A ", "\x1B", "\x1B$", "\x1B$B$\"", "\x1B(B", "\xB1", "\xA4\xA2",
               "\xE3\x81\x82", "\x80", "\xFD", "\x8E\xB1", "\x8F\xA1\xA1", nul}) +
             Each({"\x81"}, "+AAA"),
         Detect},
        {"writing, cleaning, joining and saving a text",
         StudyFiles() + Each({"あ\n", "é", "か\u3099", "😀", "😀\u200D", "😀\n", "[a ", "、", "a-\n", "1. a\n",
                              "a\tb\n", "[\n", "｢", "｢a.b｣", "\r", "　\n"}),
         WriteText},
        {"converting to Shift_JIS and breaking lines",
         Each({"あ", "あ\n", "é", "e\u0301", "\u0301", "か\u3099", "😀", "😀\n", "\u00A0", "\u2011\u2013\u00A0\u2003",
               "［a］", "［", "[a ", "[a] ", "a ", "。", "\r", "\uFEFF", "\t"}) +
             Each({"\u0301"}, "e") + Each({"\u3099", "ﾞ"}, "か") + Each({"aaaaaaaaaaaaaaaaaaaaaaaaa "}, {}, "\n"),
         Convert},
        {"reading a table and making a study file from it",
         Each({"a,", ",", "a\tb\n", "\n", "\n,\n", "'", "'=\n", "''+('\n", "é\tb\n", "😀\tb\n"}) +
             Each({"\"", "\"\"", "\"a", "\"a\n", "\"a\"\n", "\"a\" \n", "\"a\tb\n"}) +
             Each({"[]]\tb\n", "[a] b\tb\n", "a b\t", "#tags column:1\n", "a\n#tags column:<n>\n", "#deck:"}) +
             Each({"{{c1::", "{{c1::a::", "{{c1::a}}", "}}{{c1::", "{{c1::[a]}}\tb\n"}) +
             Each({QByteArray(MaxLineBytes, 'a') + "\tb\n", "a" + nul + "," + nul}) +
             Each({"<", "<a", "<a>", "<img src=a>", "<img src='", "<img &amp;", "<!--", "&", "&#", "&amp;", "&#x1F600;",
                   "[sound:", "[sound:]<br>\tb\n"},
                  html) +
             Each({"<a", "<!--"}, html, ">") + Each({"[sound:"}, html, "]") + Each({"{{c1::a::"}, {}, "}}") +
             Each({"1"}, "{{c") + Each({"::"}, "{{c1") + Each({"\"a\n\"\t"}, "a\tb\n") +
             Each({"a\tb\n\"a\tb\n"}, "a\tb\n\"a\tb\n") + Each({"a\tb\n"}, "a\tb\n\"a\tb\n", "\"\n") +
             Inputs{{"#tags column:<n>\n", {}, {}, "a\tb\n"}},
         ReadTables},
        {"guarding a cell and reading it back",
         Each({"'", "=", "-", "\t", "@!"}) + Each({"'"}, {}, "=(") + Each({"+"}, {}, "("), GuardCells},
        {"parsing a command line",
         Each({"a ", " ", "\\", "\\\"", "\"", "\" \""}) + Each({"\\"}, {}, "\"") + Each({"\""}, "\"a\" ") +
             Each({"a"}, "\""),
         ParseLine},
        {"judging an editor",
         Each({"a ", "a/", "/", "../", "./", ":sh", "/sh:", "\\\"", "sakura.exe"}) + Each({":sh"}, {}, "/") +
             Each({".", "-a"}, "/bin/sh1") + Each({" ", "1", "1a"}, "/bin/sh"),
         JudgeEditor},
        {"judging a picture by its bytes",
         Each({"\xFF", "\xFF\xD8\xFF", "\xFF\xDA", "a", "\x89PNG\r\n\x1A\n", QByteArray("\xFF\xDA\0\2", 4),
               QByteArray("\xFF\xE0\0\0", 4), QByteArray("\xFF\0", 2)}),
         JudgePicture},
        {"sorting dropped files", Each({"/none/a.txt\n", "/none/a<n>.txt\n", "/none/a<n>.csv\n", "/none/<n>\n", "a"}),
         SortDropped},
        {"listing a folder", Each({"第<n>回\n", "<n>1234567890\n", "<n>'\n"}), ListFiles},
    };
}

void Measure(const Subject &subject, const Input &input, qsizetype size)
{
    const Step step = subject.prepare(input.OfSize(size));
    if (size == WarmUpBytes) {
        step();
        return;
    }
    CALLGRIND_START_INSTRUMENTATION;
    CALLGRIND_ZERO_STATS;
    step();
    const QByteArray name = subject.name + '|' + input.Name() + '|' + QByteArray::number(size);
    CALLGRIND_DUMP_STATS_AT(name.constData());
    CALLGRIND_STOP_INSTRUMENTATION;
}

} // namespace

int main(int argc, char *argv[])
{
    const qsizetype size = argc > 1 ? QByteArrayView(argv[1]).toInt() : 0;
    if (size <= 0 || argc > 3)
        qFatal("usage: bench_growth SIZE [WORDS]");
    for (const Subject &subject : Subjects())
        for (const Input &input : subject.inputs)
            if (argc < 3 || subject.name.contains(argv[2]))
                for (const qsizetype each : {WarmUpBytes, size, 10 * size})
                    Measure(subject, input, each);
    return 0;
}
