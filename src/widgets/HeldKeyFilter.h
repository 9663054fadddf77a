// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Distinguishes a fresh key press from the repetitions of a held key. Qt usually flags these with isAutoRepeat(). An X
// server without detectable auto-repeat, however, sends each repetition as a release and a press with the same time,
// and Qt cannot flag them if the press has not arrived when it processes the release.
#pragma once

#include <QObject>

class QKeyEvent;

class HeldKeyFilter : public QObject
{
    Q_OBJECT

  public:
    /// Watches the key releases of all windows of the application during its lifetime, so that a key held while one
    /// window replaces another is recognised in the new one. Blocks no event.
    HeldKeyFilter();

    /// Whether a key press is not a repetition. May be called any number of times for the same event.
    bool IsFresh(const QKeyEvent &press) const;

  protected:
    bool eventFilter(QObject *object, QEvent *event) override;

  private:
    int m_releasedKey = 0;
    quint64 m_releasedMs = 0;
};
