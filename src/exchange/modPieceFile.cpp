// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/modPieceFile.h"

#include <QDeadlineTimer>

PieceFile::PieceFile(const QString &path, PieceMaker &pieces) : m_file(path), m_pieces(pieces) {}

bool PieceFile::GoOn(const QDeadlineTimer &deadline)
{
    QByteArray piece;
    while (m_pieces.Next(&piece) && m_file.Write(piece))
        if (deadline.hasExpired())
            return true;
    m_fault = m_file.Commit();
    return false;
}
