// Dates and times as the program stores, compares and shows them: zero-padded, 24 hours, the same in every locale.
#pragma once

#include <QDateTime>
#include <QString>

/// "yyyy/mm/dd"
QString DateText(const QDate &date);

/// "hh:nn:ss" (hours, minutes, seconds)
QString TimeText(const QDateTime &moment);

/// "yyyy/mm/dd hh:nn:ss"
QString DateTimeText(const QDateTime &moment);

/// The date of a text as DateText makes it; an invalid one for any other text.
QDate DateFromText(QStringView text);

/// The time of a text as TimeText makes it; an invalid one for any other text.
QTime TimeFromText(QStringView text);

/// "yyyy/mm/dd(aaa)", where aaa is the short Japanese name of the day of the week, e.g. "2024/03/05(火)".
QString DateWithWeekday(const QDate &date);
