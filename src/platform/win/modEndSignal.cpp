// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modEndSignal.h"

// Qt closes the windows when a Windows session ends, so there is nothing to handle.
std::shared_ptr<void> EndSignal::HandleSignals()
{
    return nullptr;
}
