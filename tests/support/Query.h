// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Reads a database through a connection of its own, as another program would.
#pragma once

#include <QStringList>

#include <sqlite3.h>

/// The last row returned by some statements, its values joined by "|"; "error: ..." on failure.
inline QString Query(const QString &database, const QByteArray &sql)
{
    sqlite3 *handle = nullptr;
    QString row;
    const auto take = [](void *target, int count, char **values, char **) {
        QStringList texts;
        for (int column = 0; column < count; ++column)
            texts += QString::fromUtf8(values[column]);
        *static_cast<QString *>(target) = texts.join(u'|');
        return 0;
    };
    sqlite3_open(database.toUtf8().constData(), &handle);
    if (sqlite3_exec(handle, sql.constData(), take, &row, nullptr) != SQLITE_OK)
        row = QStringLiteral("error: ") + QString::fromUtf8(sqlite3_errmsg(handle));
    sqlite3_close(handle);
    return row;
}
