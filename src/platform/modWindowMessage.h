// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Registered window messages, which programs share by name.
#pragma once

#include <QString>

/// The number of a registered window message, 0xC000 to 0xFFFF. Names are case-insensitive; the same name always has
/// the same number.
unsigned RegisterMessageName(const QString &name);
