// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modInputMethod.h"

// Qt uses the system's input method.
InputMethodScope::InputMethodScope() = default;
InputMethodScope::~InputMethodScope() = default;
