// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Dates and times in the form in which the program stores, compares and shows them: zero-padded, 24-hour, the same in
// every locale.
#pragma once

#include <QDateTime>
#include <QString>

/// "yyyy/mm/dd"
QString DateText(const QDate &date);

/// "hh:nn:ss" (hours, minutes, seconds)
QString TimeText(const QDateTime &moment);

/// "yyyy/mm/dd hh:nn:ss"
QString DateTimeText(const QDateTime &moment);

/// Parses the format of DateText. @return an invalid date for any other text
QDate DateFromText(QStringView text);

/// Parses the format of TimeText. @return an invalid time for any other text
QTime TimeFromText(QStringView text);

/// "yyyy/mm/dd(aaa)", where aaa is the short Japanese name of the weekday, e.g. "2024/03/05(火)".
QString DateWithWeekday(const QDate &date);

/// "m/d(aaa)", with the year before it if it is not this year's. @param today  reference date
QString ShortDayText(const QDate &date, const QDate &today);

/// The short Japanese name of a day's weekday: "火".
QChar Weekday(const QDate &date);

/// A day as a user types it: "2026/1/5", also with leading zeros, or "1/5" for the last such day up to today.
/// @return an invalid date for any other text
QDate ReadDay(const QString &text, const QDate &today);

/// "m/d（aaa）", with the year before it if it is not this year's, or "今日". @param today  reference date
QString RecentDayText(const QDate &date, const QDate &today);
