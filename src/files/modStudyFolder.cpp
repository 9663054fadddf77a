// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "files/modStudyFolder.h"

#include "base/modFile.h"
#include "exchange/modBreakLines.h"
#include "exchange/modLineCheck.h"
#include "exchange/modStudyFromText.h"
#include "platform/modCollation.h"
#include "platform/modFolderNames.h"
#include "records/modHardNote.h"
#include "text/modCheckText.h"
#include "text/modReadText.h"
#include "write/modDraft.h"

#include <QFileInfo>

#include <algorithm>
#include <functional>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A text with each number prefixed by its digit count, as two digits, so that comparing character by character sorts 2
/// before 10. Full-width digits count too.
QString WithNumbersByValue(const QString &name)
{
    QString text;
    qsizetype digits = 0;
    const QString plain = name.normalized(QString::NormalizationForm_KC);
    for (qsizetype i = 0; i < plain.size(); i += qMax(qsizetype(1), digits)) {
        const auto isDigit = [](QChar character) { return character >= u'0' && character <= u'9'; };
        digits = std::find_if_not(plain.begin() + i, plain.end(), isDigit) - (plain.begin() + i);
        if (digits > 0) {
            while (digits > 1 && plain[i] == u'0') {
                ++i;
                --digits;
            }
            text += QString::number(digits).rightJustified(2, u'0') + QStringView(plain).mid(i, digits);
        } else {
            text += plain[i];
        }
    }
    return text;
}

/// Sorts in Japanese collation order, with numbers by value and printable copies last.
void SortNaturally(QStringList *names)
{
    names->sort(); // a definite order for names that collate alike
    QStringList texts;
    std::transform(names->cbegin(), names->cend(), std::back_inserter(texts), WithNumbersByValue);
    QStringList sorted;
    for (const qsizetype i : CollatedOrder(texts))
        sorted.push_back(names->at(i));
    std::ranges::stable_partition(sorted, std::not_fn(IsPrintableCopy));
    *names = sorted;
}

/// Size and time of a file; 0 and an invalid time if it does not exist.
FileStamp StampOf(const QString &path)
{
    const QFileInfo info(path);
    return {info.size(), info.lastModified()};
}

/// A text normalised so that case and width make no difference.
QString Folded(const QString &text)
{
    return text.normalized(QString::NormalizationForm_KC).toCaseFolded();
}

} // namespace

StudyFolder::StudyFolder(const QString &path) : m_path(path) {}

void StudyFolder::Refresh()
{
    // Entries other than regular files are listed too, so that their remarks say why they cannot be opened.
    FolderNames found = ListFolder(m_path, ".txt"_L1);
    m_unshowableCount = found.unshowable;
    if (found.names != m_found) { // the system gives the same names in the same order
        m_found = found.names;
        SortNaturally(&found.names);
        m_names = found.names;
    }
    m_checked.removeIf([this](const auto &entry) { return StampOf(PathOf(entry.key())) != entry.value().stamp; });
}

QString StudyFolder::NameOf(const QString &nameOrTitle) const
{
    auto found = std::ranges::find(m_names, nameOrTitle, ListField);
    if (found == m_names.end())
        found = std::ranges::find(m_names, nameOrTitle,
                                  [this](const QString &name) { return ListField(GetFileTitle(PathOf(name))); });
    return nameOrTitle.isEmpty() || found == m_names.end() ? QString() : *found;
}

QString StudyFolder::PathOf(const QString &name) const
{
    return JoinPath(m_path, name);
}

StudyFileFacts StudyFolder::Facts(const QString &name) const
{
    return m_checked.value(name).facts;
}

bool StudyFolder::IsChecked(const QString &name) const
{
    return m_checked.contains(name);
}

void StudyFolder::Check(const QString &name)
{
    const FileStamp stamp = StampOf(PathOf(name)); // taken before reading, so that a concurrent write is noticed later
    m_checked.insert(name, {stamp, CheckStudyFile(PathOf(name))});
}

namespace {

/// A refusal, shortened for the list.
QString RemarkOn(const TextRefusal &refusal)
{
    const QString line = QString::number(refusal.line);
    switch (refusal.fault) {
    case TextFault::None:
        break;
    case TextFault::TooLarge:
        return QString::number(MaxFileMegabytes) + u"MB超過"_s;
    case TextFault::Unreadable:
        return u"読み込み不可"_s;
    case TextFault::WrongCharCode:
        return u"文字コード＝"_s + refusal.charCode;
    case TextFault::LineTooLong:
        return line + u"行目 "_s + QString::number(MaxLineBytes) + u"バイト超過"_s;
    case TextFault::BracketCount:
    case TextFault::BracketOrder:
        return line + u"行[ ]指定異常"_s;
    }
    return QString();
}

/// How to correct a file by hand.
Remedy RemedyByHand(const QString &path)
{
    WrittenFile file;
    QString text;
    bool isChanged = false;
    return OpenToWrite(path, &file, &text, &isChanged).isEmpty() ? Remedy::Write : Remedy::Edit;
}

/// How to read a file in another encoding.
Remedy RemedyForCharCode(const QString &charCode, const QByteArray &bytes)
{
    if (!CanConvertFrom(charCode))
        return Remedy::None;
    if (charCode != u"EUC" && !bytes.contains('\0'))
        return Remedy::Mend; // decoding takes long and would tell nothing else
    const StudyFromText made(bytes);
    if (made.IsNoText())
        return Remedy::None;
    return made.Faults().isLikelyKana ? Remedy::Choose : Remedy::Mend;
}

bool CanBeOpened(QStringView line)
{
    return IsBracketCountEqual(line) && IsBracketOrderValid(line);
}

Remedy RemedyFor(const TextRefusal &refusal, const QString &path, const QByteArray &bytes)
{
    switch (refusal.fault) {
    case TextFault::WrongCharCode:
        return RemedyForCharCode(refusal.charCode, bytes);
    case TextFault::LineTooLong:
        return BreakLongLines(refusal.text, MaxLineBytes).broken > 0 ? Remedy::Mend : RemedyByHand(path);
    case TextFault::BracketCount:
    case TextFault::BracketOrder:
        return CanBeOpened(WithHalfWidthPairs(refusal.text)) ? Remedy::Mend : RemedyByHand(path);
    case TextFault::None:
    case TextFault::TooLarge:
    case TextFault::Unreadable:
        break;
    }
    return Remedy::None;
}

StudyFileFacts CheckContent(const QString &path)
{
    StudyLines lines;
    QByteArray bytes;
    const TextRefusal refusal = ReadStudyText(path, MaxLineBytes, &lines, &bytes);
    // Nothing in the program changes a file that is no text. UTF-16 has such bytes too.
    const bool isText = refusal.fault == TextFault::WrongCharCode || !bytes.contains('\0');
    if (refusal)
        return {.remarks = RemarkOn(refusal),
                .remedy = isText ? RemedyFor(refusal, path, bytes) : Remedy::None,
                .canBeOpened = false};
    StudyFileFacts facts{.blanks = lines.BlankCount()};
    // With a Japanese input method on, typed brackets come out full-width, and those hide nothing.
    const bool hasFullWidth = lines.NextLineWith(u'［', 1) > 0 || lines.NextLineWith(u'］', 1) > 0;
    for (int line = lines.NextLineWith(u'［', 1); line > 0; line = lines.NextLineWith(u'［', line + 1))
        facts.fullWidth += FullWidthPairs(lines.at1(line));
    if (facts.fullWidth > 0 && isText)
        facts.remedy = Remedy::Mend;
    else if (hasFullWidth && facts.blanks == 0 && isText)
        facts.remedy = RemedyByHand(path);
    if (facts.blanks == 0)
        facts.remarks = hasFullWidth ? u"空欄なし（［ ］は全角）"_s : u"空欄なし"_s;
    return facts;
}

} // namespace

StudyFileFacts CheckStudyFile(const QString &path)
{
    StudyFileFacts facts = CheckContent(path);
    const QString title = GetFileTitle(path);
    const auto add = [&facts](const QString &remark) {
        facts.remarks += (facts.remarks.isEmpty() ? u""_s : u"，"_s) + remark;
    };
    // The title goes unescaped into the SQL statement that records a session, where a quote would end the string.
    if (title.contains(u'\''))
        add(u"学習記録なし（名前に '）"_s);
    if (NameInLine(title) != title)
        add(u"名前に制御文字"_s);
    return facts;
}

QString RemedyText(Remedy remedy)
{
    switch (remedy) {
    case Remedy::Mend:
        return u"「ファイルを直す」で直せます"_s;
    case Remedy::Write:
        return u"「書く」で直せます"_s;
    case Remedy::Edit:
        return u"「編集」で直せます"_s;
    case Remedy::Choose:
        return u"「ファイルを直す」で文字コードを選べます"_s;
    case Remedy::None:
        break;
    }
    return QString();
}

bool IsByMending(Remedy remedy)
{
    return remedy == Remedy::Mend || remedy == Remedy::Choose;
}

bool IsPrintableCopy(const QString &name)
{
    return name.endsWith(u"_印刷用.txt");
}

bool MatchesFilter(const QString &name, const QString &wanted)
{
    const QString folded = Folded(name);
    const QStringList words = Folded(wanted).split(u' ', Qt::SkipEmptyParts);
    return std::all_of(words.begin(), words.end(), [&folded](const QString &word) { return folded.contains(word); });
}

QString EmptyListText(const StudyFolder &folder, const QString &filter)
{
    if (folder.Names().isEmpty())
        return u"学習ファイルがありません。\nここに .txt をドロップするか，表から作ってください。"_s;
    return u"「"_s + filter + u"」を含むファイルはありません。"_s;
}

QString MendNote(const StudyFileFacts &facts)
{
    if (facts.remedy == Remedy::Choose)
        return u"「ファイルを直す」(Alt+C) で文字コードを選べます。"_s;
    return facts.canBeOpened ? u"「ファイルを直す」(Alt+C) で全角の［ ］も空欄になります。"_s
                             : u"「ファイルを直す」(Alt+C) で開けるようになります。"_s;
}

QString SelectionNote(qsizetype count)
{
    return QString::number(count) + u"個を選びました。直す，印刷，書き出すは，すべてのファイルに行います。"_s;
}

QString FolderNote(const StudyFolder &folder)
{
    if (const int count = folder.UnshowableCount(); count > 0)
        return u"名前を表示できないファイルが"_s + QString::number(count) +
               u"個あります。名前を変えると表示されます。"_s;
    return u"ここに学習ファイル（.txt）をドロップすると追加できます。"_s;
}

QString SelectionRefusal(const QString &selected, bool isForPrinting)
{
    if (selected.isEmpty() || selected == HardNoteTitle)
        return u"ファイルを一つ選択してください。"_s;
    return isForPrinting && IsPrintableCopy(selected) ? u"印刷用ファイル以外を一つ選択してください。"_s : QString();
}
