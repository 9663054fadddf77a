// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Files that are many times larger than the study file they are made from: made and written piece by piece, so that
// they never are in memory as a whole, and in slices, so that the window goes on responding.
#pragma once

#include "platform/modReplaceFile.h"

#include <QByteArray>
#include <QString>

class QDeadlineTimer;

/// The bytes of a file, made in pieces.
class PieceMaker
{
  public:
    virtual ~PieceMaker() = default;

    /// Makes the next piece, which takes a few milliseconds.
    /// @return false if there are no more pieces
    virtual bool Next(QByteArray *piece) = 0;

    /// How much has been made, from 0 to 1.
    virtual double Done() const = 0;
};

/// Writes the pieces to a file, which is created or replaced when all are written. Until then, and for good if this
/// object is destroyed before, an old file stays as it is.
class PieceFile
{
  public:
    /// @param pieces  must outlive this object
    PieceFile(const QString &path, PieceMaker &pieces);

    /// Goes on writing until the deadline.
    /// @return whether there is more to write; if not, the file is complete or there is a Fault()
    bool GoOn(const QDeadlineTimer &deadline);

    /// How much has been written, from 0 to 1.
    double Done() const
    {
        return m_pieces.Done();
    }

    /// Why the file could not be written; the old file is then unchanged.
    const FileFault &Fault() const
    {
        return m_fault;
    }

  private:
    FileReplacement m_file;
    PieceMaker &m_pieces;
    FileFault m_fault;
};
