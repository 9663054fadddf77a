// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Keeps what a timer has to say from interrupting the user.
#pragma once

class QWidget;

/// Whether a modal window or a menu is open over a window. A timer whose work may end in a message waits meanwhile, by
/// starting again: a dialog must never open over another one.
bool IsBlocked(const QWidget *window);
