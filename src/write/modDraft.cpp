// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "write/modDraft.h"

#include "base/modCodePage.h"
#include "base/modDateText.h"
#include "exchange/modConvertText.h"
#include "exchange/modStudyFromText.h"
#include "platform/modReplaceFile.h"
#include "text/modCharCode.h"
#include "text/modCheckText.h"
#include "text/modDecodeText.h"
#include "text/modReadText.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QStringDecoder>
#include <QStringTokenizer>

#include <algorithm>
#include <optional>
#include <tuple>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QByteArrayView DraftHeading = "Kotoban draft 1\n";
constexpr qsizetype DigestLength = 64;
constexpr QStringView NewTitle = u"新しい学習ファイル";

QString NameOf(const QString &path)
{
    return QFileInfo(path).fileName();
}

QString FileLine(const QString &path)
{
    return u"    ファイル名＝"_s + NameInLine(NameOf(path)) + u"\r\n"_s;
}

/// The message for a file with NUL characters, which word processors write, or a computer that loses its power.
QString NoTextMessage(const QString &path)
{
    return u"次のファイルは，テキストファイルではないため，ここでは書けません。\r\n"_s + FileLine(path) +
           u"\r\nワープロや表計算のファイルなら，そのソフトでテキスト（.txt）として保存し直してください。\r\n"
           u"学習ファイルが壊れたのなら，同じフォルダの「"_s +
           NameInLine(NameOf(path)) + u".bak」に前の内容が残っていることがあります。"_s;
}

/// The line end that most lines of a text have; CR LF if another is only as frequent.
QByteArray MostFrequentLineEnd(const QString &text)
{
    const qsizetype both = text.count(u"\r\n"_s);
    const qsizetype lineFeeds = text.count(u'\n') - both;
    const qsizetype returns = text.count(u'\r') - both;
    if (both >= std::max(lineFeeds, returns))
        return "\r\n";
    return lineFeeds >= returns ? "\n" : "\r";
}

/// The lines of a file without their ends; the last one is empty if the line before it is ended.
std::vector<QByteArrayView> SplitLines(const QByteArray &bytes)
{
    std::vector<QByteArrayView> lines;
    qsizetype start = 0;
    for (qsizetype at = 0; at < bytes.size(); ++at) {
        if (bytes[at] != '\r' && bytes[at] != '\n')
            continue;
        lines.push_back(QByteArrayView(bytes).sliced(start, at - start));
        if (bytes[at] == '\r' && at + 1 < bytes.size() && bytes[at + 1] == '\n')
            ++at;
        start = at + 1;
    }
    lines.push_back(QByteArrayView(bytes).sliced(start));
    return lines;
}

using KeptBytes = std::vector<std::optional<QByteArrayView>>;

/// The bytes of the old file for each line whose text is in it: at the beginning and end of the file line by line, and
/// between, of the lines with this text, the next one.
KeptBytes BytesToKeep(const QList<QStringView> &lines, const WrittenFile &file)
{
    const std::vector<QByteArrayView> old = SplitLines(file.bytes);
    KeptBytes kept(size_t(lines.size()));
    const size_t shorter = std::min(old.size(), kept.size());
    size_t same = 0;
    const auto keepIfSame = [&](size_t line, size_t oldLine) {
        if (FromCodePage932(old[oldLine]) != lines[qsizetype(line)])
            return false;
        kept[line] = old[oldLine];
        return true;
    };
    while (same < shorter && keepIfSame(same, same))
        ++same;
    size_t sameAtEnd = 0;
    while (sameAtEnd < shorter - same && keepIfSame(kept.size() - 1 - sameAtEnd, old.size() - 1 - sameAtEnd))
        ++sameAtEnd;
    if (same + sameAtEnd == kept.size())
        return kept;
    QHash<QString, QList<QByteArrayView>> between;
    for (size_t line = same; line < old.size() - sameAtEnd; ++line)
        between[FromCodePage932(old[line])] += old[line];
    for (size_t line = same; line < kept.size() - sameAtEnd; ++line) {
        const auto found = between.find(lines[qsizetype(line)].toString());
        if (found == between.end())
            continue;
        kept[line] = found->front();
        if (found->size() > 1)
            found->removeFirst();
    }
    return kept;
}

bool IsWritable(QChar character)
{
    return IsInCodePage932(character) && !character.isNull();
}

/// A line as it is when all that it cannot have is replaced.
QString ReplacedLine(const QString &line)
{
    return ConvertText(line, Accents::Remove, WithoutEquivalent::Geta).text.remove(QChar::Null);
}

/// Adds the characters of a line that cannot be written. @param number  of the line, 1-based
void AddUnwritable(QStringView line, int number, EncodedDraft *encoded)
{
    for (qsizetype at = 0; at < line.size(); ++at) {
        if (IsWritable(line[at]))
            continue;
        const bool isPair = line[at].isHighSurrogate() && at + 1 < line.size() && line[at + 1].isLowSurrogate();
        const qsizetype length = isPair ? 2 : 1;
        ++encoded->unwritableCount;
        if (encoded->unwritable.size() < MaxUnwritableShown)
            encoded->unwritable.push_back(
                {.line = number,
                 .column = int(at) + 1,
                 .length = int(length),
                 .character = isPair ? QChar::surrogateToUcs4(line[at], line[at + 1]) : char32_t(line[at].unicode()),
                 .replacement = ReplacedLine(line.sliced(at, length).toString())});
        at += length - 1;
    }
}

/// Whether a backup of a file was made on a day.
bool HasBackupOf(const QString &path, const QDate &day)
{
    const QString first = path + u".bak"_s;
    QString backup = first;
    for (int number = 2; QFileInfo::exists(backup); ++number) {
        if (QFileInfo(backup).lastModified().date() == day)
            return true;
        backup = first + QString::number(number);
    }
    return false;
}

/// The first of title.txt, title2.txt ... that does not exist, nor a draft of it.
QString FreeStudyPath(const QString &title)
{
    const auto isTaken = [](const QString &path) { return QFileInfo::exists(path) || QFileInfo(path).isSymLink(); };
    QString path = title + u".txt"_s;
    for (int number = 2; isTaken(path) || isTaken(DraftPath(path)); ++number)
        path = title + QString::number(number) + u".txt"_s;
    return path;
}

/// Replaces a file after copying the old one to KeptTwinPath. @return a fault, after which the folder is unchanged
FileFault ReplaceAndKeepTwin(const QString &path, const QByteArray &bytes, QString *twinPath)
{
    *twinPath = KeptTwinPath(path);
    if (FileFault fault = CopyWholeFile(path, *twinPath))
        return fault;
    FileFault fault = ReplaceFile(path, bytes);
    if (fault)
        QFile::remove(*twinPath);
    return fault;
}

} // namespace

QByteArray DigestOf(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
}

QString OpenToWrite(const QString &path, WrittenFile *file, QString *text, bool *isChanged)
{
    text->clear();
    *isChanged = false;
    *file = {.path = path, .digest = {}};
    const QString title = GetFileTitle(path);
    if (QFileInfo(path).size() > MaxWriteBytes)
        return TooLargeToWriteMessage(title);
    QByteArray bytes;
    if (const FileFault fault = ReadWholeFile(path, &bytes, MaxWriteBytes))
        return UnreadableFileMessage(title, fault.reason);
    const CharCode code = DetectCharCode(WholeFile(bytes));
    const bool isStudyText = code == CharCode::Ascii || code == CharCode::Sjis;
    const QString name = CharCodeName(code);
    QString decoded = DecodeText(bytes, code);
    if (decoded.contains(QChar::Null))
        return NoTextMessage(path);
    if (!isStudyText && !CanConvertFrom(name))
        return NotConvertibleMessage(title, name);
    *isChanged = !isStudyText;
    file->digest = DigestOf(bytes);
    file->lineEnd = MostFrequentLineEnd(decoded);
    if (isStudyText)
        file->bytes = bytes;
    // A text field has no other line ends than these, either.
    for (const QString &lineEnd : {u"\r\n"_s, u"\r"_s, u"\u2028"_s, u"\u2029"_s})
        decoded.replace(lineEnd, u"\n"_s);
    if (HasEndlessLine(decoded))
        return EndlessLineMessage(title);
    *text = decoded;
    return {};
}

WrittenFile NewWrittenFile(const QString &folder)
{
    const QStringList drafts = QDir(folder).entryList({NewTitle + DraftPath(u"*.txt"_s)}, QDir::Files, QDir::Name);
    for (const QString &draft : drafts) {
        const QString path = JoinPath(folder, draft.chopped(DraftPath({}).size()));
        if (!QFileInfo::exists(path))
            return {.path = path, .digest = {}};
    }
    return FreshWrittenFile(folder);
}

WrittenFile FreshWrittenFile(const QString &folder)
{
    return {.path = FreeStudyPath(JoinPath(folder, NewTitle.toString())), .digest = {}};
}

QString TooLargeToWriteMessage(const QString &fileTitle)
{
    return u"次のファイルは"_s + QString::number(MaxWriteMegabytes) +
           u"MBを超えるため，ここでは書けません。\r\n    ファイル名＝"_s + fileTitle +
           u"\r\n\r\n「編集」を押して，テキストエディタで開いてください。"_s;
}

QString EndlessLineMessage(const QString &fileTitle)
{
    return u"次のファイルには"_s + QString::number(MaxWriteLine) +
           u"文字を超える行があるため，ここでは書けません。\r\n    ファイル名＝"_s + fileTitle +
           u"\r\n\r\n「編集」を押して，テキストエディタで開いてください。"_s;
}

bool HasEndlessLine(QStringView text)
{
    for (qsizetype start = 0; text.size() - start > MaxWriteLine;) {
        const qsizetype end = text.lastIndexOf(u'\n', start + MaxWriteLine);
        if (end < start)
            return true;
        start = end + 1;
    }
    return false;
}

QString WithoutEndlessLines(const QString &text)
{
    QString broken;
    for (const QStringView line : QStringTokenizer(text, u'\n')) {
        if (!broken.isNull())
            broken += u'\n';
        for (qsizetype start = 0; start == 0 || start < line.size(); start += MaxWriteLine)
            broken += (start > 0 ? u"\n"_s : u""_s) + line.sliced(start, qMin(MaxWriteLine, line.size() - start));
    }
    return broken;
}

EncodedDraft EncodeDraft(const QString &text, const WrittenFile &file)
{
    const QList<QStringView> lines = QStringView(text).split(u'\n');
    const KeptBytes kept = BytesToKeep(lines, file);
    EncodedDraft encoded;
    encoded.bytes.reserve(2 * text.size());
    for (qsizetype line = 0; line < lines.size(); ++line) {
        if (line > 0)
            encoded.bytes += file.lineEnd;
        if (const std::optional<QByteArrayView> bytes = kept[size_t(line)]) {
            encoded.bytes += *bytes;
        } else {
            AddUnwritable(lines[line], int(line) + 1, &encoded);
            encoded.bytes += ToCodePage932(lines[line]);
        }
    }
    return encoded;
}

QString WithUnwritableReplaced(const QString &text, const WrittenFile &file)
{
    const QList<QStringView> lines = QStringView(text).split(u'\n');
    const KeptBytes kept = BytesToKeep(lines, file);
    QString result;
    result.reserve(text.size());
    for (qsizetype line = 0; line < lines.size(); ++line) {
        if (line > 0)
            result += u'\n';
        if (kept[size_t(line)] || std::ranges::all_of(lines[line], IsWritable))
            result += lines[line];
        else
            result += ReplacedLine(lines[line].toString());
    }
    return result;
}

QString UnwritableQuestion(const EncodedDraft &encoded)
{
    QString question =
        u"Shift_JISにない文字が"_s + QString::number(encoded.unwritableCount) + u"個あるため，保存できません。\r\n"_s;
    for (const UnwritableCharacter &found : encoded.unwritable) {
        question += u"\r\n  "_s + QString::number(found.line) + u"行目 "_s + QString::number(found.column) +
                    u"文字目："_s + NameAndNumber(found.character) + u" → "_s;
        if (found.replacement.isEmpty())
            question += u"（前の文字に合わせるか，なくします）"_s;
        else
            question += found.replacement == u" " ? u"空白"_s : found.replacement;
    }
    if (const qsizetype more = encoded.unwritableCount - encoded.unwritable.size(); more > 0)
        question += u"\r\n  ほかに"_s + QString::number(more) + u"個"_s;
    return question + u"\r\n\r\nこのように置き換えて，保存しますか？"_s;
}

QString SaveWithProblemsQuestion(qsizetype problems)
{
    return u"問題のある所が"_s + QString::number(problems) +
           u"件あります。このまま保存すると，学習するときに開けません。\r\n\r\nこのまま保存しますか？"_s;
}

SaveResult SaveDraft(const QString &text, WrittenFile *file, const QDate &today, OnConflict onConflict)
{
    EncodedDraft encoded = EncodeDraft(text, *file);
    if (encoded.unwritableCount > 0)
        return {.outcome = SaveResult::Unwritable, .encoded = encoded};
    const QString &path = file->path;
    const QByteArray &bytes = encoded.bytes;
    if (FileFault fault = SizeRefusal(path, bytes, MaxFileBytes))
        return {.outcome = SaveResult::Failed, .fault = fault};
    QByteArray now;
    const bool exists = QFileInfo::exists(path);
    if (exists)
        if (FileFault fault = ReadWholeFile(path, &now))
            return {.outcome = SaveResult::Failed, .fault = fault};
    const bool isConflict = exists && now != bytes && DigestOf(now) != file->digest;
    if (isConflict && onConflict == OnConflict::Stop)
        return {.outcome = SaveResult::Conflict};
    SaveResult result;
    if (!exists || now != bytes) {
        if (isConflict && onConflict == OnConflict::KeepBoth)
            result.fault = ReplaceAndKeepTwin(path, bytes, &result.keptPath);
        else if (isConflict || (exists && !HasBackupOf(path, today)))
            result.fault = ReplaceAndKeep(path, bytes, &result.keptPath);
        else
            result.fault = ReplaceFile(path, bytes);
        if (result.fault) {
            result.outcome = SaveResult::Failed;
            result.keptPath.clear();
            return result;
        }
    }
    file->bytes = bytes;
    file->digest = DigestOf(bytes);
    RemoveDraft(path);
    StudyLines lines;
    result.refusal = ReadStudyText(path, MaxLineBytes, &lines).message;
    return result;
}

QString KeptTwinPath(const QString &path)
{
    const QString title = JoinPath(QFileInfo(path).path(), QFileInfo(path).completeBaseName() + u"（ほかの変更）"_s);
    return FreeStudyPath(title);
}

QString ConflictQuestion(const QString &path)
{
    return u"次のファイルは，開いてからほかで変更されました。\r\n"_s + FileLine(path) +
           u"\r\n両方残す：ほかで変更されたものを，学習ファイル「"_s + NameInLine(NameOf(KeptTwinPath(path))) +
           u"」にします。\r\n置き換える：ほかで変更されたものを，一覧に出ない「"_s +
           NameInLine(NameOf(FreeBackupPath(path))) +
           u"」にします。\r\n\r\nどちらでも，ここで書いたものは元の名前で保存します。"_s;
}

QString NotSavedMessage(const FileFault &fault)
{
    return FaultMessage(u"保存できません。書いたものはこの画面に残っています。"_s, fault);
}

QString DraftPath(const QString &path)
{
    return path + u".draft"_s;
}

FileFault WriteDraft(const QString &text, const WrittenFile &file)
{
    const QString path = DraftPath(file.path);
    const QByteArray bytes = DraftHeading + file.digest + '\n' + text.toUtf8();
    if (FileFault fault = SizeRefusal(path, bytes, MaxDraftBytes))
        return fault;
    FileReplacement draft(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    std::ignore = draft.Write(bytes); // Commit reports a failure
    return draft.Commit();
}

bool ReadDraft(const QString &path, Draft *draft)
{
    *draft = {};
    QByteArray bytes;
    if (ReadWholeFile(DraftPath(path), &bytes, MaxDraftBytes) || !bytes.startsWith(DraftHeading))
        return false;
    const qsizetype digestEnd = bytes.indexOf('\n', DraftHeading.size());
    const QByteArray digest = bytes.sliced(DraftHeading.size(), std::max(digestEnd - DraftHeading.size(), 0LL));
    if (digestEnd < 0 || (!digest.isEmpty() && digest.size() != DigestLength))
        return false;
    using Flag = QStringConverter::Flag;
    QStringDecoder decoder(QStringConverter::Utf8, Flag::Stateless | Flag::ConvertInitialBom);
    QString text = decoder(QByteArrayView(bytes).sliced(digestEnd + 1));
    if (decoder.hasError() || text.contains(QChar::Null) || text.contains(u'\r'))
        return false;
    *draft = {.text = text, .digest = digest, .written = QFileInfo(DraftPath(path)).lastModified()};
    return true;
}

bool RemoveDraft(const QString &path)
{
    const QString draft = DraftPath(path);
    return QFile::remove(draft) || !QFileInfo::exists(draft);
}

bool HasUnsavedText(const Draft &draft, const QString &text)
{
    return draft.text != text;
}

QString DraftQuestion(const Draft &draft, const WrittenFile &file)
{
    QString question = u"前に保存されなかった下書きがあります。\r\n"_s + FileLine(file.path) + u"    日時＝"_s +
                       DateTimeText(draft.written) + u"\r\n"_s;
    if (draft.digest != file.digest)
        question +=
            u"\r\nファイルはその後，ほかで変更されました。下書きを選んでも，保存するときに両方を残せます。\r\n"_s;
    return question + u"\r\n下書きの続きを書きますか？\r\n（「いいえ」を押すと，下書きを捨てます。）"_s;
}

void TakeDraft(const Draft &draft, WrittenFile *file)
{
    file->digest = draft.digest;
}

QString SaveBeforeClosingQuestion(const QString &path)
{
    return u"まだ保存していません。\r\n"_s + FileLine(path) + u"\r\n保存しますか？"_s;
}
