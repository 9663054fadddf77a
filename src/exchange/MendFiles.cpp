// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/MendFiles.h"

#include "base/modFile.h"
#include "exchange/frmMend.h"
#include "exchange/modMendReport.h"
#include "exchange/modStudyFromText.h"
#include "text/modReadText.h"
#include "widgets/frmMsg.h"
#include "widgets/frmWait.h"

#include <QDeadlineTimer>
#include <QFileInfo>

#include <functional>
#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Whether there is anything to mend in a file.
bool NeedsMending(const StudyFromText &made)
{
    return CanConvertFrom(made.CodeName()) || made.Faults() != TextFaults();
}

/// Reads a file to be mended. @return why that cannot be done, for the user; empty if it can
QString ReadToMend(const QString &path, QByteArray *bytes, std::optional<StudyFromText> *made)
{
    made->reset();
    if (const FileFault fault = ReadWholeFile(path, bytes))
        return UnreadableFileMessage(GetFileTitle(path), fault.reason);
    made->emplace(*bytes);
    const QString code = (*made)->CodeName();
    if (code == u"SJIS" || code == u"ASCII" || CanConvertFrom(code))
        return QString();
    made->reset();
    return NotConvertibleMessage(GetFileTitle(path), code);
}

MendOutcome MendOne(SystemServices &services, frmMsg &msg, QWidget *owner, const Editor &editor, const QString &path)
{
    QByteArray before;
    std::optional<StudyFromText> made;
    if (const QString refusal = ReadToMend(path, &before, &made); !refusal.isEmpty()) {
        msg.Refuse(owner, refusal);
        return MendOutcome::Nothing;
    }
    if (!MakeAsChosen(msg, owner, QFileInfo(path).fileName(), &*made))
        return MendOutcome::Nothing;
    QByteArray bytes;
    if (const TextRefusal refusal = made->Encode(&bytes)) {
        if (msg.Ask(owner, refusal.message + u"\r\n\r\nこのファイルをテキストエディタで開きますか？"_s) ==
            MsgResult::Ok)
            OpenInEditor(services, editor, path, refusal.line);
        return MendOutcome::Nothing;
    }
    if (bytes == before || !NeedsMending(*made)) {
        msg.Refuse(owner, NothingMendedMessage(*made));
        return MendOutcome::Nothing;
    }
    QString keptPath;
    if (const FileFault fault = ReplaceConverted(path, before, bytes, &keptPath)) {
        msg.Refuse(owner, FaultMessage(u"直したファイルを書き込めません。ファイルは元のままです。"_s, fault));
        return MendOutcome::Nothing;
    }
    return OfferWriting(msg, owner, made->Report(MendedHeading(made->CodeName()), path, keptPath))
               ? MendOutcome::ToBeWritten
               : MendOutcome::Done;
}

/// Goes through several files in slices.
class FileByFile
{
  public:
    /// @param begin  reads a file; leaves nothing if it cannot be mended; @param end  called when it has been gone
    /// through
    using Begin = std::function<void(const QString &path, std::optional<StudyFromText> *made)>;
    using End = std::function<void(const QString &path, const StudyFromText &made)>;

    FileByFile(const QStringList &paths, Begin begin, End end)
        : m_paths(paths), m_begin(std::move(begin)), m_end(std::move(end))
    {
    }

    bool GoOn(const QDeadlineTimer &deadline)
    {
        while (m_next < m_paths.size()) {
            const QString &path = m_paths[m_next];
            if (!m_made)
                m_begin(path, &m_made);
            if (m_made && m_made->GoOn(deadline))
                return true;
            if (m_made)
                m_end(path, *m_made);
            m_made.reset();
            ++m_next;
            if (deadline.hasExpired())
                break;
        }
        return m_next < m_paths.size();
    }

    /// Paths of the files that have not been gone through.
    QStringList Left() const
    {
        return m_paths.sliced(m_next);
    }

    double Done() const
    {
        return (double(m_next) + (m_made ? m_made->Done() : 0)) / double(m_paths.size());
    }

  private:
    QStringList m_paths;
    Begin m_begin;
    End m_end;
    qsizetype m_next = 0;
    std::optional<StudyFromText> m_made;
};

MendOutcome MendSeveral(frmMsg &msg, QWidget *owner, const QStringList &paths)
{
    MendReport report;
    TextFaults faults;
    QByteArray before;
    const auto read = [&](const QString &path, std::optional<StudyFromText> *made) {
        if (const QString refusal = ReadToMend(path, &before, made); !refusal.isEmpty())
            report.AddRefused(path, refusal);
    };
    QStringList readable;
    FileByFile listing(paths, read, [&](const QString &path, const StudyFromText &made) {
        AddFaults(QFileInfo(path).fileName(), made.Faults(), &faults);
        if (made.Faults().isLikelyKana)
            report.AddRefused(path, LikelyKanaMessage());
        else if (!NeedsMending(made))
            report.AddUnchanged(path, made);
        else
            readable += path;
    });
    if (!frmWait(u"ファイルを調べています。"_s, owner).Run(listing))
        return MendOutcome::Nothing;
    TextChoices choices;
    const QString count = QString::number(readable.size()) + u"個のファイル"_s;
    if (faults != TextFaults() && !frmMend(msg, false, owner).Choose(count, faults, &choices))
        return MendOutcome::Nothing;
    const auto make = [&](const QString &path, std::optional<StudyFromText> *made) {
        read(path, made);
        if (*made)
            (*made)->Make(choices);
    };
    FileByFile making(readable, make, [&](const QString &path, const StudyFromText &made) {
        QByteArray bytes;
        QString keptPath;
        if (const TextRefusal refusal = made.Encode(&bytes))
            report.AddRefused(path, refusal.message);
        else if (bytes == before)
            report.AddUnchanged(path, made);
        else if (const FileFault fault = ReplaceConverted(path, before, bytes, &keptPath))
            report.AddRefused(path, fault.reason);
        else
            report.AddMended(path, keptPath, made);
    });
    if (!frmWait(u"ファイルを直しています。"_s, owner).Run(making))
        report.AddLeft(making.Left());
    msg.DispFrmMsg(owner, report.Text(), MsgStyle::Ok, report.IsAllMended() ? u"start.wav"_s : u"notify.wav"_s);
    return report.IsAnyMended() ? MendOutcome::Done : MendOutcome::Nothing;
}

} // namespace

bool MakeAsChosen(frmMsg &msg, QWidget *owner, const QString &name, StudyFromText *made)
{
    if (!frmWait(u"文章を調べています。"_s, owner).Run(*made))
        return false;
    TextChoices choices = ChoicesFor(made->Faults());
    if (made->Faults() != TextFaults() &&
        !frmMend(msg, made->IsOfTable(), owner).Choose(name, made->Faults(), &choices))
        return false;
    made->Make(choices);
    return frmWait(u"学習ファイルを作っています。"_s, owner).Run(*made);
}

bool OfferWriting(frmMsg &msg, QWidget *owner, const QString &report)
{
    return msg.DispFrmMsg(owner, report + u"\r\n\r\n「書く」で開きますか？"_s, MsgStyle::YesNo, u"start.wav"_s) ==
           MsgResult::Ok;
}

MendOutcome MendFiles(SystemServices &services, frmMsg &msg, QWidget *owner, const Editor &editor,
                      const QStringList &paths)
{
    return paths.size() == 1 ? MendOne(services, msg, owner, editor, paths.front()) : MendSeveral(msg, owner, paths);
}
