// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modInputMethod.h"

InputMethodChoice ChooseInputMethod(const QByteArray &module, const QByteArray &modifiers)
{
    const QByteArray wanted = module.toLower();
    if (wanted == "ibus" || wanted == "compose" || wanted == "none")
        return {wanted, false};
    // Fcitx supports the IBus protocol on the session bus, as IBus does for sandboxed programs. Without either, Qt
    // falls back to dead keys.
    return {"ibus", wanted.contains("fcitx") || modifiers.contains("fcitx")};
}
