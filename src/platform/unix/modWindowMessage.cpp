// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modWindowMessage.h"

// There are no such messages here; the number only has to be a function of the name.
unsigned RegisterMessageName(const QString &name)
{
    return 0xC000u | (qChecksum(name.toCaseFolded().toUtf8()) & 0x3FFFu);
}
