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

/// Writes the remaining pieces to a file.
inline FileFault WriteAll(const QString &path, PieceMaker &pieces)
{
    PieceFile file(path, pieces);
    file.GoOn(QDeadlineTimer(QDeadlineTimer::Forever));
    return file.Fault();
}

/// The export of a study file; empty if it is refused.
inline QByteArray ExportOf(const QString &path, ExportKind kind, const MarkList *onlyHard = nullptr)
{
    StudyExport made;
    return made.Read(path, kind, onlyHard) ? QByteArray() : AllPieces(made);
}

/// Writes the sheet of a study file. @return why it was not written; empty if it was
inline QString WriteSheet(const QString &path, const QString &sheetPath, bool withAnswers,
                          const MarkList *onlyHard = nullptr)
{
    PrintSheet sheet;
    const SheetChoices choices{.print = {.withAnswers = withAnswers}, .onlyHard = onlyHard};
    const TextRefusal refusal = sheet.Read(path, sheetPath, choices);
    return refusal ? refusal.message : WriteAll(sheetPath, sheet).reason;
}
