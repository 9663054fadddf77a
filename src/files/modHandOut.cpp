// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "files/modHandOut.h"

#include "base/modFile.h"
#include "base/modParagraph.h"
#include "files/modStudyFolder.h"
#include "text/modCheckText.h"
#include "text/modDisplayText.h"
#include "text/modPictureName.h"
#include "text/modReadText.h"

#include <QDeadlineTimer>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

/// What has been left out, and why.
QString LeftOutParagraphs(const HandOut &handOut)
{
    return Paragraph(u"印刷用のコピーと苦手帳は入れません。", handOut.others) +
           Paragraph(u"開けないため，入れません。", handOut.refused) +
           Paragraph(u"図のファイルがありません。", handOut.missing) +
           Paragraph(u"ほかのフォルダを指すリンクのため，入れません。", handOut.linked);
}

} // namespace

HandOutSearch::HandOutSearch(const QStringList &paths, const QStringList &others)
    : m_paths(paths), m_canonical(QFileInfo(QFileInfo(paths.value(0)).path()).canonicalFilePath()),
      m_folder(std::make_unique<PictureFolder>(QFileInfo(paths.value(0)).path()))
{
    m_found.others = others;
}

HandOutSearch::~HandOutSearch() = default;

bool HandOutSearch::GoOn(const QDeadlineTimer &deadline)
{
    while (m_next < m_paths.size()) {
        Add(m_paths[m_next++]);
        if (deadline.hasExpired())
            break;
    }
    return m_next < m_paths.size();
}

double HandOutSearch::Done() const
{
    return m_paths.isEmpty() ? 1 : double(m_next) / double(m_paths.size());
}

HandOut HandOutSearch::Take() const
{
    HandOut found = m_found;
    found.paths += m_pictures;
    return found;
}

void HandOutSearch::Add(const QString &path)
{
    const QString name = NameInLine(QFileInfo(path).fileName());
    if (IsPrintableCopy(QFileInfo(path).fileName())) {
        m_found.others += name;
        return;
    }
    StudyLines lines;
    if (ReadStudyText(path, MaxLineBytes, &lines)) {
        const StudyFileFacts facts = CheckStudyFile(path);
        m_found.refused += name + u'：' + facts.remarks + u'　' + RemedyText(facts.remedy);
        return;
    }
    m_found.paths += path;
    const DisplayText text(std::move(lines));
    for (int line = text.NextLineWith(u'｢', 1); line > 0; line = text.NextLineWith(u'｢', line + 1)) {
        for (const PictureReference &reference : PictureReferences(text.Line(line))) {
            const QString picture = m_folder->Find(reference.name);
            if (picture.isEmpty())
                m_found.missing += name + u' ' + QString::number(line) + u"行目：｢"_s + reference.name + u'｣';
            else if (!m_seen.contains(picture))
                AddPicture(picture);
            m_seen.insert(picture);
        }
    }
}

/// The user has chosen the study file, not the picture: a link may lead to any file.
void HandOutSearch::AddPicture(const QString &path)
{
    const QFileInfo file(path);
    if (LeadsElsewhere(file, m_canonical))
        m_found.linked += NameInLine(file.fileName());
    else
        m_pictures += path;
}

QString NothingToHandOutMessage(const HandOut &handOut)
{
    return u"書き出すファイルがありません。"_s + LeftOutParagraphs(handOut);
}

QString ReplaceHandedOutQuestion(const QStringList &replaced)
{
    return u"選んだフォルダに，同じ名前で中身の違うファイルがあります。"_s + Indented(ShownNames(replaced)) +
           u"\r\n\r\n置き換えますか？（「いいえ」を押すと，ないものだけを書き出します。）"_s;
}

QString HandedOutMessage(const HandOut &handOut, const FilesToTake &files, const FileTaking &taking)
{
    DoneFiles done{.done = ShownNames(taking.Copied()),
                   .kept = ShownNames(files.declined),
                   .failed = taking.Failures(),
                   .left = ShownNames(taking.Left())};
    return DoneFilesMessage(u"書き出し"_s, done) +
           Paragraph(u"もう同じファイルがあります。", ShownNames(files.present)) +
           Paragraph(QString(QString::number(MaxFileMegabytes) + u"MBを超えるため，入れません。"_s),
                     ShownNames(files.tooLarge)) +
           Paragraph(u"同じ名前のファイルが二つ以上あるため，初めの一つだけにします。", ShownNames(files.twins)) +
           LeftOutParagraphs(handOut);
}
