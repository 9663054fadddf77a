// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The system's light/dark setting, where Qt's palette does not follow it.
#pragma once

#include <QObject>

#include <memory>

class DarkMode : public QObject
{
    Q_OBJECT

  public:
    /// Starts listening for changes of the setting, where the system reports them.
    DarkMode();
    ~DarkMode() override;

    /// Whether the system is set to dark mode and Qt's palette does not reflect that. Where the setting is asked for on
    /// a bus, false until the answer is there; it is followed by Changed if it is true. Elsewhere queried on every
    /// call.
    bool IsDark() const;

  Q_SIGNALS:
    void Changed();

  private:
    class Source;
    std::unique_ptr<Source> m_source; // null where there is nothing to listen to
};
