// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "base/modDateText.h"

#include <QRegularExpression>

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

QChar Weekday(const QDate &date)
{
    const QStringView weekdays = u"月火水木金土日"; // QDate: Monday is 1
    return weekdays[date.dayOfWeek() - 1];
}

QString DateWithWeekday(const QDate &date)
{
    return DateText(date) + u'(' + Weekday(date) + u')';
}

namespace {

QString DayAndMonth(const QDate &date, const QDate &today)
{
    return date.toString(date.year() == today.year() ? u"M/d" : u"yyyy/M/d");
}

} // namespace

QString ShortDayText(const QDate &date, const QDate &today)
{
    return DayAndMonth(date, today) + u'(' + Weekday(date) + u')';
}

QString RecentDayText(const QDate &date, const QDate &today)
{
    if (date == today)
        return u"今日"_s;
    return DayAndMonth(date, today) + u'（' + Weekday(date) + u'）';
}

QDate ReadDay(const QString &text, const QDate &today)
{
    static const QRegularExpression form(u"^(?:([0-9]{4})/)?([0-9]{1,2})/([0-9]{1,2})$"_s);
    const QRegularExpressionMatch match = form.match(text);
    const int month = match.capturedView(2).toInt();
    const int day = match.capturedView(3).toInt();
    if (match.hasCaptured(1) || !match.hasMatch())
        return QDate(match.capturedView(1).toInt(), month, day);
    constexpr int yearsToTry = 9; // leap days are up to eight years apart
    for (int year = today.year(); year > today.year() - yearsToTry; --year)
        if (const QDate date(year, month, day); date.isValid() && date <= today)
            return date;
    return QDate();
}
