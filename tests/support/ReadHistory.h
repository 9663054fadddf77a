// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Reads a history in one go.
#pragma once

#include "history/modHistory.h"

#include <QDeadlineTimer>

inline History ReadHistory(StudyDatabase &database, const QDate &endDate, int weeks, const QString &userName)
{
    HistoryReader reader(database, userName);
    reader.Begin(endDate, weeks);
    reader.GoOn(QDeadlineTimer(QDeadlineTimer::Forever));
    return reader.Result();
}
