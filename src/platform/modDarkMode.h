// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The system's light/dark setting, where Qt's palette does not follow it.
#pragma once

/// Whether the system is set to dark mode and Qt's palette does not reflect that. Queries the system on every call.
bool IsSystemInDarkMode();
