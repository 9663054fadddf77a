// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Detects whether another instance of the program is running from the same application folder.
#pragma once

#include <QString>

#include <memory>

/// System-wide lock of the running instance, held for the lifetime of the object. The system releases it with the
/// process, even after a crash; nothing is written to the application folder.
class InstanceMark
{
  public:
    explicit InstanceMark(const QString &applicationFolder);
    Q_DISABLE_COPY_MOVE(InstanceMark)

    /// Whether another instance held the lock of this folder when this object was created.
    bool HasPreviousInstance() const
    {
        return m_hasPrevious;
    }

  private:
    std::shared_ptr<void> m_lock; // what its deleter releases is the system's
    bool m_hasPrevious = false;
};
