// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// What has come of mending study files, as complete texts for the user, lines separated by CR LF.
#pragma once

#include "exchange/modStudyFromText.h"

#include <QStringList>

/// "UTF8からShift_JISに変換しました。", or what was done to a file in Shift_JIS.
QString MendedHeading(const QString &codeName);

/// The message about a file that is as before, with what still keeps it from being studied.
QString NothingMendedMessage(const StudyFromText &made);

/// Why one of several files that is likely half-width kana is left alone.
QString LikelyKanaMessage();

/// Adds the faults of a file to those of several, the entries with its name.
void AddFaults(const QString &name, const TextFaults &ofFile, TextFaults *faults);

/// The report about several files. Of many only the first are named.
class MendReport
{
  public:
    void AddMended(const QString &path, const QString &keptPath, const StudyFromText &made);
    void AddUnchanged(const QString &path, const StudyFromText &made);

    /// @param reason  may be a message of several lines, of which the first is shown
    void AddRefused(const QString &path, const QString &reason);

    /// @param paths  of files that were not looked at, because the user stopped the work
    void AddLeft(const QStringList &paths);

    bool IsAnyMended() const
    {
        return !m_mended.isEmpty();
    }

    /// Whether all files were mended and can be studied.
    bool IsAllMended() const
    {
        return m_unchanged.isEmpty() && m_refused.isEmpty() && m_remaining.isEmpty() && m_left.isEmpty();
    }

    QString Text() const;

  private:
    void AddRemaining(const QString &path, const StudyFromText &made);

    QStringList m_mended;
    QStringList m_unchanged;
    QStringList m_remaining; // faults that keep files from being studied
    QStringList m_refused;
    QStringList m_left;
};
