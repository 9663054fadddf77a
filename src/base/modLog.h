// What the program says about itself: the run log, a small text file beside the executable that is started afresh at
// every start, and the trace sink, to which every event handler passes its name and which discards it.
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringView>

#include <functional>

/// Run log. Code page 932, lines ended by CR LF: line 1 the executable with its version, line 2 the date, then entries
/// of time, one blank and a message, which may itself span lines. The file is open only while it is written, so it is
/// complete on the disk even if the process ends at the next step.
class RunLog
{
  public:
    /// @param baseName  the executable's name without folder and extension; the log is <baseName>_log.txt
    /// @param now  tells the present moment in local time
    RunLog(const QString &applicationFolder, const QString &baseName, const std::function<QDateTime()> &now);

    /// Creates or truncates the log and writes its two header lines.
    /// @return false when the file cannot be written; error then holds the system's reason
    bool WriteYmdLogStart(QString *error) const;

    /// Appends one entry with the present time.
    /// @return false when the file cannot be written; error then holds the system's reason
    bool WriteLog(const QString &message, QString *error) const;

    QString Path() const;

  private:
    QString m_path;
    QString m_baseName;
    std::function<QDateTime()> m_now;
};

/// Takes the line of a step or of an event handler and discards it. That is meant: the call sites stay, so that a build
/// of one's own can switch tracing on.
void WriteTrace(QStringView line);

/// Takes part in the above: prepares nothing.
void TraceSetup();
