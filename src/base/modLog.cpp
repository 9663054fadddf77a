// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "base/modLog.h"

#include "base/modCodePage.h"
#include "base/modDateText.h"
#include "base/modProduct.h"

#include <QFile>
#include <QLoggingCategory>

using namespace Qt::Literals::StringLiterals;

namespace {

// From warnings on: its lines are of level debug.
Q_LOGGING_CATEGORY(Trace, "kotoban.trace", QtWarningMsg)

FileFault WriteText(const QString &path, QIODevice::OpenMode mode, const QString &text)
{
    if (FileFault fault = WriteRefusal(path))
        return fault;
    QFile file(path);
    const QByteArray bytes = ToCodePage932(text);
    const bool isWritten = file.open(mode | QIODevice::Unbuffered) && file.write(bytes) == bytes.size();
    return isWritten ? FileFault() : FaultOf(file);
}

} // namespace

RunLog::RunLog(const QString &applicationFolder, const QString &baseName, const std::function<QDateTime()> &now)
    : m_path(JoinPath(applicationFolder, baseName + u"_log.txt"_s)), m_baseName(baseName), m_now(now)
{
}

FileFault RunLog::WriteYmdLogStart() const
{
    const QString header =
        m_baseName + u".exe　Ver"_s + VersionText() + u"\r\n"_s + DateWithWeekday(m_now().date()) + u"\r\n"_s;
    return WriteText(m_path, QIODevice::WriteOnly | QIODevice::Truncate, header);
}

FileFault RunLog::WriteLog(const QString &message) const
{
    const QString entry = TimeText(m_now()) + u' ' + message + u"\r\n"_s;
    return WriteText(m_path, QIODevice::WriteOnly | QIODevice::Append, entry);
}

void WriteTrace(QStringView line)
{
    qCDebug(Trace).noquote() << line;
}

void TraceSetup() {}
