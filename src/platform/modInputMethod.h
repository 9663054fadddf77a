// Which input method the toolkit takes, where it has fewer of them than the desktop.
#pragma once

#include <QByteArray>

/// The environment that chooses an input method.
struct InputMethodChoice
{
    QByteArray module; ///< QT_IM_MODULE
    bool isPortal;     ///< whether IBUS_USE_PORTAL is set
    bool operator==(const InputMethodChoice &) const = default;
};

/// What a toolkit that knows only IBus's protocol must be told, so that Japanese can be typed on a desktop with Fcitx, too,
/// and on one that says nothing because its own programs need not be told.
/// @param module  QT_IM_MODULE as the desktop has set it; @param modifiers  XMODIFIERS
InputMethodChoice ChooseInputMethod(const QByteArray &module, const QByteArray &modifiers);

/// Lives while the application object is made, from which moment on the environment is the desktop's again: other
/// programs are started with it. Does nothing where the toolkit has the input methods of the desktop.
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
