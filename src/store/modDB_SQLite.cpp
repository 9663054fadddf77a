// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "store/modDB_SQLite.h"

#include "base/modDateText.h"

#include <QDeadlineTimer>
#include <QVarLengthArray>

#include <algorithm>
#include <optional>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The condition shared by the history queries. Dates can be compared as text because of their fixed width. Sessions
/// that were never completed have no number of answers and are thus excluded.
QString SpanCondition(const QDate &endDate, int dayCount, const QString &userName)
{
    const QDate startDate = endDate.addDays(1 - qint64(dayCount));
    return u"where  ymd_sta between '"_s + DateText(startDate) + u"' and '"_s + DateText(endDate) + u"'\r\n"_s +
           u"  and  user_name = '"_s + userName + u"'\r\n"_s + u"  and  num_answer >= 1\r\n"_s;
}

/// The values of a row, in the order of its statement.
using RowValues = QVarLengthArray<QStringView, 8>;

RowValues Split(const QString &row)
{
    return qTokenize(row, u'\t').toContainer<RowValues>();
}

/// Seconds from a fixed day to a date "yyyy/mm/dd" and a time "hh:nn:ss", ignoring time zones; nullopt for any other
/// texts.
std::optional<qint64> WallClockSeconds(QStringView dayText, QStringView timeText)
{
    const QDate day = DateFromText(dayText);
    const QTime time = TimeFromText(timeText);
    if (!day.isValid() || !time.isValid())
        return std::nullopt;
    return day.toJulianDay() * 86'400 + time.msecsSinceStartOfDay() / 1000;
}

} // namespace

bool DBCreateKotoban(StudyDatabase &database)
{
    return std::ranges::all_of(
        KotobanSchema, [&database](QStringView statement) { return database.SQLite3NonQuery(statement.toString()); });
}

bool DBFillNewKotoban(StudyDatabase &database)
{
    const auto ignore = [](const QString &) { return true; };
    return database.SQLite3Query(u"pragma journal_mode=off"_s, ignore, {}) && database.SQLite3NonQuery(u"begin"_s) &&
           DBCreateKotoban(database) && database.SQLite3NonQuery(u"commit"_s);
}

void DBIndexKotoban(StudyDatabase &database)
{
    const SilentFaults silent(database);
    database.SQLite3NonQuery(KotobanSchema.back().toString());
}

void DBInsRecKotoban(StudyDatabase &database, const QDateTime &sessionStart, const QString &userName,
                     const QString &fileName)
{
    database.SQLite3NonQuery(InsertStatement(sessionStart, userName, fileName), {userName, fileName});
}

bool DBUpdRecKotoban(StudyDatabase &database, const SystemServices &clock, const QDateTime &sessionStart,
                     const QString &userName, int answerCount)
{
    return database.SQLite3NonQuery(UpdateStatement(clock.Now(), sessionStart, userName, answerCount), {userName});
}

bool DBSelRecKotoban(StudyDatabase &database, const QDate &endDate, int dayCount, const QString &userName,
                     ResultTable *table, bool ascending)
{
    return database.SQLite3Query(SelectStatement(endDate, dayCount, userName, ascending), table, {userName});
}

bool DBSelRecKotoban(StudyDatabase &database, const QString &userName, const QDeadlineTimer &until, DaySpan *unread,
                     const std::function<void(const RecordedSession &)> &take)
{
    const DaySpan days = *unread;
    DaySpan left = {days.first, days.first.addDays(-1)};
    QString day;
    QDate date;
    const auto takeUntil = [&](const QString &row) {
        const RowValues values = Split(row);
        if (values[0] != day) {
            day = values[0].toString();
            const QDate dateBefore = std::exchange(date, DateFromText(day));
            // The next statement begins with a day, so this one can end only where one day follows another. SQLite
            // sorts all sessions of a day in one step anyway.
            if (date.isValid() && dateBefore.isValid() && until.hasExpired()) {
                left.last = date;
                return false;
            }
        }
        take({values[0].left(10), values[1], values[2], values[3], values[4].toInt()});
        return true;
    };
    const int dayCount = int(days.first.daysTo(days.last)) + 1;
    const bool isRead =
        database.SQLite3Query(SelectStatement(days.last, dayCount, userName, false), takeUntil, {userName});
    if (isRead)
        *unread = left;
    return isRead;
}

qint64 DBSumTimeKotoban(StudyDatabase &database, const QDate &endDate, int dayCount, const QString &userName,
                        bool *isRead)
{
    qint64 seconds = 0;
    const auto add = [&seconds](const QString &row) {
        const RowValues values = Split(row);
        seconds += SecondsBetween(values[0], values[1], values[2]);
        return true;
    };
    const bool hasSucceeded = database.SQLite3Query(SumTimeStatement(endDate, dayCount, userName), add, {userName});
    if (isRead)
        *isRead = hasSucceeded;
    return seconds;
}

int DBSumAnsKotoban(StudyDatabase &database, const QDate &endDate, int dayCount, const QString &userName, bool *isRead)
{
    ResultTable table;
    const bool hasSucceeded =
        database.SQLite3Query(SumAnswersStatement(endDate, dayCount, userName), &table, {userName});
    if (isRead)
        *isRead = hasSucceeded;
    return table.size() > 1 ? database.SQLite3GetColumn(table, 1, u"sum_a"_s).toInt() : 0;
}

qint64 SecondsBetween(QStringView day, QStringView startTime, QStringView end)
{
    const std::optional<qint64> from = WallClockSeconds(day, startTime);
    const std::optional<qint64> to = WallClockSeconds(end.left(10), end.mid(11));
    return from && to ? *to - *from : 0;
}

QString InsertStatement(const QDateTime &sessionStart, const QString &userName, const QString &fileName)
{
    return u"insert into t_kotoban (ymd_sta,user_name,hms_sta,file_name) values(\r\n"_s + u"   '"_s +
           DateText(sessionStart.date()) + u"'\r\n"_s + u"  ,'"_s + userName + u"'\r\n"_s + u"  ,'"_s +
           TimeText(sessionStart) + u"'\r\n"_s + u"  ,'"_s + fileName + u"'\r\n"_s + u")"_s;
}

QString UpdateStatement(const QDateTime &now, const QDateTime &sessionStart, const QString &userName, int answerCount)
{
    return u"update t_kotoban set\r\n"_s + u"   dt_end = '"_s + DateTimeText(now) + u"'\r\n"_s + u"  ,num_answer = "_s +
           QString::number(answerCount) + u"\r\n"_s + u"where ymd_sta = '"_s + DateText(sessionStart.date()) +
           u"'\r\n"_s + u"  and user_name = '"_s + userName + u"'\r\n"_s + u"  and hms_sta = '"_s +
           TimeText(sessionStart) + u"'\r\n"_s;
}

// The second key deliberately has no "desc": even when the newest day comes first, the sessions of a day are listed in
// the order in which they took place.
QString SelectStatement(const QDate &endDate, int dayCount, const QString &userName, bool ascending)
{
    return u"select ymd_sta\r\n      ,hms_sta\r\n      ,file_name\r\n      ,dt_end\r\n      ,num_answer\r\n"_s +
           u"from   t_kotoban\r\n"_s + SpanCondition(endDate, dayCount, userName) + u"order by\r\n"_s +
           (ascending ? u"       ymd_sta\r\n"_s : u"       ymd_sta desc\r\n"_s) + u"      ,hms_sta\r\n"_s;
}

QString SumTimeStatement(const QDate &endDate, int dayCount, const QString &userName)
{
    return u"select ymd_sta\r\n      ,hms_sta\r\n      ,dt_end\r\nfrom   t_kotoban\r\n"_s +
           SpanCondition(endDate, dayCount, userName);
}

QString SumAnswersStatement(const QDate &endDate, int dayCount, const QString &userName)
{
    return u"select ifnull(sum(num_answer),0) as sum_a\r\nfrom   t_kotoban\r\n"_s +
           SpanCondition(endDate, dayCount, userName);
}
