// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "base/modDateText.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// The number formed by some digits of a text; -1 if one of them is not a digit.
int NumberAt(QStringView text, qsizetype at, qsizetype length)
{
    int number = 0;
    for (const QChar digit : text.sliced(at, length)) {
        if (digit < u'0' || digit > u'9')
            return -1;
        number = number * 10 + digit.unicode() - u'0';
    }
    return number;
}

} // namespace

QString DateText(const QDate &date)
{
    return date.toString(u"yyyy/MM/dd");
}

QString TimeText(const QDateTime &moment)
{
    return moment.toString(u"HH:mm:ss");
}

QString DateTimeText(const QDateTime &moment)
{
    return moment.toString(u"yyyy/MM/dd HH:mm:ss");
}

QDate DateFromText(QStringView text)
{
    if (text.size() != 10 || text[4] != u'/' || text[7] != u'/')
        return QDate();
    const int year = NumberAt(text, 0, 4);
    // QDate accepts -1 as a year (1 BC).
    return year < 0 ? QDate() : QDate(year, NumberAt(text, 5, 2), NumberAt(text, 8, 2));
}

QTime TimeFromText(QStringView text)
{
    if (text.size() != 8 || text[2] != u':' || text[5] != u':')
        return QTime();
    return QTime(NumberAt(text, 0, 2), NumberAt(text, 3, 2), NumberAt(text, 6, 2));
}

namespace {

QChar Weekday(const QDate &date)
{
    const QStringView weekdays = u"月火水木金土日"; // QDate: Monday is 1
    return weekdays[date.dayOfWeek() - 1];
}

} // namespace

QString DateWithWeekday(const QDate &date)
{
    return DateText(date) + u'(' + Weekday(date) + u')';
}

QString RecentDayText(const QDate &date, const QDate &today)
{
    if (date == today)
        return u"今日"_s;
    return date.toString(date.year() == today.year() ? u"M/d" : u"yyyy/M/d") + u'（' + Weekday(date) + u'）';
}
