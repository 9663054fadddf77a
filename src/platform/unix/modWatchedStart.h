// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Starts programs that open something for the user. Those of a desktop often start whether or not they can open it, and
// say only by their exit status that a program is missing.
#pragma once

#include <QStringList>

#include <functional>

/// Starts a program in a session of its own, without waiting for it. It goes on when this program ends.
/// @param folder  its working directory; that of this program if empty
/// @param failed  called from the event loop if the program ends with an error within two seconds
/// @return false if it could not be started
[[nodiscard]] bool StartWatched(const QString &program, const QStringList &arguments, const QString &folder,
                                const std::function<void()> &failed);
