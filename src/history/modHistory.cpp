// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "history/modHistory.h"

#include "base/modCodePage.h"
#include "base/modDateText.h"
#include "platform/modReplaceFile.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A number right-aligned in a field of the given width; leading digits that do not fit are lost.
QString RightAligned(qint64 number, int width)
{
    return QString::number(number).rightJustified(width).right(width);
}

} // namespace

void History::Append(const RecordedSession &session)
{
    if (m_days.empty() || session.day != m_days.back().dayText)
        m_days.push_back({session.day.toString(), DateFromText(session.day), LineCount()});
    HistoryDay &day = m_days.back();
    // A session during which the clock was set back counts as 0, not as negative time.
    const qint64 seconds = qMax(qint64(0), SecondsBetween(session.day, session.startTime, session.end));
    day.seconds += seconds;
    day.answers += session.answers;
    day.texts += session.startTime.left(5);
    const qsizetype nameAt = day.texts.size();
    day.texts += session.fileName;
    day.sessions.push_back({seconds, session.answers, nameAt, day.texts.size()});
}

void History::AddToTotals(qint64 seconds, qint64 answers)
{
    m_totalSeconds += seconds;
    m_totalAnswers += answers;
}

QString History::Line(int line) const
{
    const HistoryDay &day = *std::prev(std::ranges::upper_bound(m_days, line, {}, &HistoryDay::headingLine));
    if (line == day.headingLine)
        return day.day.isValid() ? DateWithWeekday(day.day) : day.dayText;
    const size_t number = size_t(line - day.headingLine - 1);
    const HistorySession &session = day.sessions[number];
    const qsizetype start = number == 0 ? 0 : day.sessions[number - 1].end;
    return HistoryLine(day.texts.sliced(start, session.nameAt - start), session.seconds, session.answers,
                       day.texts.sliced(session.nameAt, session.end - session.nameAt));
}

QString History::TotalTime() const
{
    return HoursMinutesSeconds(qMax(qint64(0), m_totalSeconds));
}

QString History::TotalAnswers() const
{
    return QString::number(m_totalAnswers);
}

void HistoryReader::Begin(const QDate &endDate, int weeks)
{
    m_history = History(endDate, weeks);
    m_unread = {m_history.StartDate(), endDate};
    m_hasFailed = false;
}

bool HistoryReader::GoOn(const QDeadlineTimer &until)
{
    if (m_unread.IsEmpty())
        return false;
    const QDate endDate = m_unread.last;
    bool isRead = DBSelRecKotoban(m_database, m_userName, until, &m_unread,
                                  [this](const RecordedSession &session) { m_history.Append(session); });
    // After a fault, each further query would only report it again.
    const int dayCount = int(m_unread.last.daysTo(endDate));
    const qint64 seconds = isRead ? DBSumTimeKotoban(m_database, endDate, dayCount, m_userName, &isRead) : 0;
    const int answers = isRead ? DBSumAnsKotoban(m_database, endDate, dayCount, m_userName, &isRead) : 0;
    m_history.AddToTotals(seconds, answers);
    if (!isRead) {
        m_history = History(m_history.EndDate(), m_history.Weeks());
        m_unread = DaySpan();
        m_hasFailed = true;
    }
    return !m_unread.IsEmpty();
}

int ReadWeeks(const QString &text)
{
    static const QRegularExpression wholeNumber(u"^[0-9]{1,4}$"_s);
    return wholeNumber.match(text).hasMatch() ? text.toInt() : 0;
}

QString HistoryLine(const QString &startTime, qint64 seconds, int answers, const QString &fileName)
{
    const qint64 minutes = seconds / 60;
    // An ideographic space is as wide as the character for minutes.
    const QString minutesText = minutes >= 1 ? QString(RightAligned(minutes, 3) + u'分') : u"   　"_s;
    return startTime.left(5) + u"   "_s + minutesText + RightAligned(seconds % 60, 2) + u"秒"_s +
           RightAligned(answers, 4) + u"問 "_s + NameInLine(fileName);
}

QString HoursMinutesSeconds(qint64 seconds)
{
    const QString hours = seconds >= 3600 ? QString(QString::number(seconds / 3600) + u"時間 "_s) : QString();
    return hours + QString::number(seconds / 60 % 60) + u"分 "_s + QString::number(seconds % 60) + u'秒';
}

QString ReportFileName(const QString &userName, const QDate &today, int weeks)
{
    return FileNamePart(userName) + u"_瞬記帳学習記録"_s + today.toString(u"yyyy_MMdd") + u"までの"_s +
           QString::number(weeks) + u"週分.txt"_s;
}

QString ReportText(const History &history)
{
    QString text;
    for (int line = 0; line < history.LineCount(); ++line)
        text += history.Line(line) + u"\r\n"_s;
    return text + u"総学習時間＝"_s + history.TotalTime() + u"  総回答数＝"_s + history.TotalAnswers() + u"\r\n"_s;
}

FileFault WriteReport(const QString &path, const History &history)
{
    return ReplaceFile(path, ToCodePage932(ReportText(history)));
}
