#include "files/modStudyFolder.h"

#include "base/modFile.h"
#include "text/modCheckText.h"
#include "text/modReadText.h"

#include <QDir>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

StudyFolder::StudyFolder(const QString &path) : m_path(path) {}

void StudyFolder::Refresh()
{
    QHash<QString, Entry> entries;
    m_names.clear();
    // What is no regular file is listed too (QDir::System), so that its remark says why it cannot be opened.
    const QFileInfoList files = QDir(m_path).entryInfoList({u"*.txt"_s}, QDir::Files | QDir::System, QDir::NoSort);
    for (const QFileInfo &info : files) {
        const QString name = info.fileName();
        const Entry known = m_entries.value(name, Entry{});
        const bool isSame = known.size == info.size() && known.modified == info.lastModified();
        entries.insert(name, isSame ? known : Entry{info.size(), info.lastModified(), false, QString()});
        m_names += name;
    }
    m_entries = entries;
    std::sort(m_names.begin(), m_names.end());
}

QString StudyFolder::PathOf(const QString &name) const
{
    return JoinPath(m_path, name);
}

QString StudyFolder::Fault(const QString &name) const
{
    return m_entries.value(name).fault;
}

bool StudyFolder::IsChecked(const QString &name) const
{
    return m_entries.value(name).isChecked;
}

void StudyFolder::Check(const QString &name)
{
    if (const auto entry = m_entries.find(name); entry != m_entries.end()) {
        entry->fault = FileFault(PathOf(name));
        entry->isChecked = true;
    }
}

namespace {

/// A refusal in the few words of a list entry.
QString RemarkOn(const TextRefusal &refusal)
{
    const QString line = QString::number(refusal.line);
    switch (refusal.fault) {
    case TextFault::None:
        break;
    case TextFault::TooLarge:
        return QString::number(MostFileMegabytes) + u"MB超過"_s;
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

QString ContentFault(const QString &path)
{
    StudyLines lines;
    const TextRefusal refusal = ReadStudyText(path, MaxLineBytes, &lines);
    if (refusal.fault != TextFault::None)
        return RemarkOn(refusal);
    if (lines.NextLineWith(u'[', 1) > 0)
        return QString();
    // Typed with the Japanese input method on, brackets come out full-width, and those hide nothing.
    const bool hasFullWidth = lines.NextLineWith(u'［', 1) > 0 || lines.NextLineWith(u'］', 1) > 0;
    return hasFullWidth ? u"空欄なし（［ ］は全角）"_s : u"空欄なし"_s;
}

} // namespace

QString FileFault(const QString &path)
{
    QStringList remarks = {ContentFault(path)};
    remarks.removeAll(QString());
    // The title goes into the statement that records a session as it is, and a quote ends the text there.
    if (GetFileTitle(path).contains(u'\''))
        remarks += u"学習記録なし（名前に '）"_s;
    return remarks.join(u'、');
}

bool CheckSelection(const QString &selected, bool isForPrinting, QString *message)
{
    if (selected.isEmpty())
        *message = u"ファイルを一つ選択してください。"_s;
    else if (isForPrinting && selected.endsWith(u"_印刷用.txt"))
        *message = u"印刷用ファイル以外を一つ選択してください。"_s;
    else
        return true;
    return false;
}
