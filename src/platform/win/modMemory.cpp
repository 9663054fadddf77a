// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modMemory.h"

// Large pages need a privilege that ordinary accounts do not have.
void PreferLargePages(void *, qsizetype) {}
