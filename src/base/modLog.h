// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Run log and trace. The run log is a small text file beside the executable, started anew on every run. The trace gets
// the name of every event handler that is entered; it is off by default.
#pragma once

#include "base/modFile.h"

#include <QDateTime>
#include <QString>
#include <QStringView>

#include <functional>

/// Run log, in code page 932 with CR LF line endings. Line 1 is the executable with its version, line 2 the date; then
/// entries of time, one space and a message, which may span several lines. The file is open only during a write, so
/// every entry survives a crash of the process.
class RunLog
{
  public:
    /// @param baseName  the executable's name without folder and extension; the log is <baseName>_log.txt
    /// @param now  returns the current local time
    RunLog(const QString &applicationFolder, const QString &baseName, const std::function<QDateTime()> &now);

    /// Creates or truncates the log and writes its two header lines.
    FileFault WriteYmdLogStart() const;

    /// Appends an entry with the current time.
    FileFault WriteLog(const QString &message) const;

  private:
    QString m_path;
    QString m_baseName;
    std::function<QDateTime()> m_now;
};

/// Passes the line of a step or of an event handler to Qt's logging category "kotoban.trace". The category is off, so
/// that by default nothing is written anywhere; a logging rule switches it on in any build, e.g. the environment
/// variable QT_LOGGING_RULES="kotoban.trace.debug=true".
void WriteTrace(QStringView line);

/// Called once before the first line. Does nothing: Qt reads its logging rules itself.
void TraceSetup();
