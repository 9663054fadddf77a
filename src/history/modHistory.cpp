// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "history/modHistory.h"

#include "base/modCodePage.h"
#include "base/modDateText.h"
#include "base/modFile.h"
#include "platform/modReplaceFile.h"
#include "store/modDB_SQLite.h"

#include <QDeadlineTimer>
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

void History::Append(const HistorySession &session)
{
    if (m_days.empty() || session.day != m_lastDay) { // a database from elsewhere may lack dates
        const QDate date = DateFromText(session.day);
        if (!date.isValid())
            m_headingTexts.insert(m_days.size(), session.day.toString());
        m_headings.push_back(LineCount());
        m_days.push_back({date, 0, 0});
        m_lastDay = session.day.toString();
    }
    m_days.back().seconds += session.seconds;
    m_days.back().answers += session.answers;
    m_sessions.push_back(
        {session.seconds, session.answers, IndexOf(session.startTime.left(5)), IndexOf(session.fileName)});
}

int History::IndexOf(QStringView text)
{
    // Most sessions share their time and their file name with an earlier one.
    const auto found = m_indexes.constFind(text);
    if (found != m_indexes.constEnd())
        return *found;
    m_texts.push_back(text.toString());
    m_indexes.insert(m_texts.back(), int(m_texts.size()) - 1);
    return int(m_texts.size()) - 1;
}

void History::AddToTotals(qint64 seconds, qint64 answers)
{
    m_totalSeconds += seconds;
    m_totalAnswers += answers;
}

QString History::Line(int line) const
{
    const size_t day = size_t(std::ranges::upper_bound(m_headings, line) - m_headings.begin()) - 1;
    if (m_headings[day] == line)
        return m_days[day].day.isValid() ? DateWithWeekday(m_days[day].day) : m_headingTexts.value(day);
    const Session &session = m_sessions[size_t(line) - day - 1]; // each day up to this one has a heading
    return HistoryLine(m_texts[size_t(session.startTime)], session.seconds, session.answers,
                       m_texts[size_t(session.fileName)]);
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
    m_unread = SessionSpans(m_history.StartDate(), endDate);
    m_hasFailed = false;
}

bool HistoryReader::GoOn(const QDeadlineTimer &until)
{
    do {
        if (m_unread.IsAtEnd())
            return false;
        qsizetype sessions = 0;
        if (!ReadSpan(m_unread.EndDate(), m_unread.DayCount(), &sessions)) {
            m_history = History(m_history.EndDate(), m_history.Weeks());
            m_unread = SessionSpans();
            m_hasFailed = true;
            return false;
        }
        m_unread.Next(sessions);
    } while (!until.hasExpired());
    return !m_unread.IsAtEnd();
}

bool HistoryReader::ReadSpan(const QDate &endDate, int dayCount, qsizetype *sessions)
{
    ResultTable table;
    // After a fault, each further query would only report it again.
    if (!DBSelRecKotoban(m_database, endDate, dayCount, m_userName, &table, false))
        return false;
    *sessions = qsizetype(table.size()) - 1;
    if (*sessions == 0)
        return true;
    bool isRead = false;
    const qint64 seconds = DBSumTimeKotoban(m_database, endDate, dayCount, m_userName, &isRead);
    if (!isRead)
        return false;
    const int answers = DBSumAnsKotoban(m_database, endDate, dayCount, m_userName, &isRead);
    if (!isRead)
        return false;
    m_history.AddToTotals(seconds, answers);
    const int dayColumn = m_database.FindColumn(table, u"ymd_sta");
    const int startColumn = m_database.FindColumn(table, u"hms_sta");
    const int fileColumn = m_database.FindColumn(table, u"file_name");
    const int endColumn = m_database.FindColumn(table, u"dt_end");
    const int answersColumn = m_database.FindColumn(table, u"num_answer");
    for (int row = 1; row < int(table.size()); ++row) {
        const RowValues values(table, row);
        const QStringView day = values[dayColumn].left(10);
        const QStringView startTime = values[startColumn];
        // A session during which the clock was set back counts as 0, not as negative time.
        const qint64 duration = qMax(qint64(0), SecondsBetween(day, startTime, values[endColumn]));
        m_history.Append({day, startTime, values[fileColumn], duration, values[answersColumn].toInt()});
    }
    return true;
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

bool WriteReport(const QString &path, const History &history, QString *message)
{
    QString reason;
    if (ReplaceFile(path, ToCodePage932(ReportText(history)), &reason))
        return true;
    *message = u"学習記録をファイルに出力できません。\r\n  "_s + path + u"\r\n  "_s + reason;
    return false;
}
