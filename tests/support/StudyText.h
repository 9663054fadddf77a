// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Study texts for tests.
#pragma once

#include "base/modCodePage.h"
#include "text/modReadText.h"

#include <QStringList>

/// The lines as read from a file.
inline StudyLines LinesOf(const QStringList &texts)
{
    StudyLines lines;
    QByteArray bytes;
    for (const QString &text : texts)
        bytes += ToCodePage932(text) + "\r\n";
    ReadAllLines(bytes, ExpandTabs::No, &lines);
    return lines;
}
