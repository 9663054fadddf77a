// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "history/modHistory.h"

#include "base/modCodePage.h"
#include "base/modDateText.h"
#include "exchange/modTable.h"
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
    const StudySum sum = SumOf(session);
    day.sum += sum;
    day.texts += session.startTime.left(5);
    const qsizetype nameAt = day.texts.size();
    day.texts += session.fileName;
    day.sessions.push_back({sum, nameAt, day.texts.size()});
}

void History::AddToTotals(qint64 seconds, qint64 answers)
{
    m_totalSeconds += seconds;
    m_totalAnswers += answers;
}

QStringView HistoryDay::StartTime(size_t number) const
{
    const qsizetype start = number == 0 ? 0 : sessions[number - 1].end;
    return QStringView(texts).sliced(start, sessions[number].nameAt - start);
}

QStringView HistoryDay::FileName(size_t number) const
{
    const HistorySession &session = sessions[number];
    return QStringView(texts).sliced(session.nameAt, session.end - session.nameAt);
}

const HistoryDay &History::DayOfLine(int line) const
{
    return *std::prev(std::ranges::upper_bound(m_days, line, {}, &HistoryDay::headingLine));
}

QString History::Line(int line) const
{
    const HistoryDay &day = DayOfLine(line);
    if (line == day.headingLine)
        return HistoryHeading(day);
    const size_t number = size_t(line - day.headingLine - 1);
    const StudySum &sum = day.sessions[number].sum;
    return HistoryLine(day.StartTime(number).toString(), sum.seconds, int(sum.answers),
                       day.FileName(number).toString());
}

bool History::IsHeading(int line) const
{
    return line == DayOfLine(line).headingLine;
}

int History::LineOfSession(const QDateTime &start) const
{
    const int heading = HeadingIn({start.date(), start.date()});
    if (heading < 0)
        return -1;
    const HistoryDay &day = DayOfLine(heading);
    const QString time = start.toString(u"HH:mm");
    for (size_t number = day.sessions.size(); number > 0; --number)
        if (day.StartTime(number - 1) == time)
            return heading + int(number);
    return -1;
}

int History::HeadingIn(const DaySpan &days) const
{
    const auto isUpToLast = [&days](const HistoryDay &day) { return day.day.isValid() && day.day <= days.last; };
    const auto day = std::ranges::find_if(m_days, isUpToLast);
    return day == m_days.end() || day->day < days.first ? -1 : day->headingLine;
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

QString HistoryHeading(const HistoryDay &day)
{
    const QString date = day.day.isValid() ? DateWithWeekday(day.day) : day.dayText;
    return date + u'　' + StudySumText(day.sum);
}

QString HistorySentence(const History &history, const QDate &today)
{
    StudySum sum;
    for (const HistoryDay &day : history.Days())
        sum += day.sum;
    const QString start = history.EndDate() == today ? u"この"_s : DateWithWeekday(history.EndDate()) + u"までの"_s;
    return start + QString::number(history.Weeks()) + u"週間は "_s + QString::number(history.Days().size()) +
           u"日，"_s + StudyTimeText(sum.seconds) + u'，' + QString::number(sum.answers) + u'問';
}

namespace {

QString ReportName(const QString &userName, const QDate &today, int weeks)
{
    return FileNamePart(userName) + u"_瞬記帳学習記録"_s + today.toString(u"yyyy_MMdd") + u"までの"_s +
           QString::number(weeks) + u"週分"_s;
}

} // namespace

QString ReportFileName(const QString &userName, const QDate &today, int weeks)
{
    return ReportName(userName, today, weeks) + u".txt"_s;
}

QString TableFileName(const QString &userName, const QDate &today, int weeks)
{
    return ReportName(userName, today, weeks) + u".csv"_s;
}

QByteArray HistoryTable(const History &history, const QString &userName)
{
    QString table = u"\uFEFF利用者,日付,開始,秒,回答数,ファイル\r\n"_s;
    const QString user = CsvField(NameInLine(userName));
    for (const HistoryDay &day : history.Days()) {
        for (size_t number = 0; number < day.sessions.size(); ++number) {
            const StudySum &sum = day.sessions[number].sum;
            table += user + u',' + CsvField(NameInLine(day.dayText)) + u',' + day.StartTime(number) + u',' +
                     QString::number(sum.seconds) + u',' + QString::number(sum.answers) + u',' +
                     CsvField(NameInLine(day.FileName(number).toString())) + u"\r\n"_s;
        }
    }
    return table.toUtf8();
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
