// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Takes what is made in pieces as a whole.
#pragma once

#include "exchange/modExport.h"
#include "exchange/modPrintSheet.h"

#include <QDeadlineTimer>

/// The remaining pieces as one.
inline QByteArray AllPieces(PieceMaker &pieces)
{
    QByteArray all;
    for (QByteArray piece; pieces.Next(&piece);)
        all += piece;
    return all;
}

/// Writes the remaining pieces to a file. @return whether it was written; if not, message holds the system's reason
inline bool WriteAll(const QString &path, PieceMaker &pieces, QString *message)
{
    PieceFile file(path, pieces);
    file.GoOn(QDeadlineTimer(QDeadlineTimer::Forever));
    *message = file.Error();
    return message->isEmpty();
}

/// The export of a study file; empty if it is refused, and message then holds the text for the user.
inline QByteArray ExportOf(const QString &path, ExportKind kind, QString *message, const MarkList *onlyHard = nullptr)
{
    StudyExport made;
    return made.Read(path, kind, message, onlyHard) ? AllPieces(made) : QByteArray();
}

/// Writes the sheet of a study file. @return whether it was written; if not, message says why
inline bool WriteSheet(const QString &path, const QString &sheetPath, bool withAnswers, QString *message,
                       const MarkList *onlyHard = nullptr)
{
    PrintSheet sheet;
    return sheet.Read(path, sheetPath, withAnswers, message, onlyHard) && WriteAll(sheetPath, sheet, message);
}
