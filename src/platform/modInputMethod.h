// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Selects the input method of a program with a static Qt, which contains fewer of them than the desktop.
#pragma once

#include <QByteArray>

/// Environment variables that select an input method.
struct InputMethodChoice
{
    QByteArray module; ///< QT_IM_MODULE
    bool isPortal;     ///< whether IBUS_USE_PORTAL is set
    bool operator==(const InputMethodChoice &) const = default;
};

/// The variables with which Japanese can be typed in a Qt that only supports the IBus protocol: also on a desktop with
/// Fcitx, and on one that sets no variables because its own programs need none.
/// @param module  the desktop's QT_IM_MODULE
/// @param modifiers  the desktop's XMODIFIERS
InputMethodChoice ChooseInputMethod(const QByteArray &module, const QByteArray &modifiers);

/// Sets these variables while the application object is created, and restores them afterwards, because other programs
/// are started with the same environment. Does nothing with the desktop's own Qt.
class InputMethodScope
{
  public:
    InputMethodScope();
    ~InputMethodScope();
    Q_DISABLE_COPY_MOVE(InputMethodScope)

  private:
    QByteArray m_module;
    QByteArray m_portal;
};
