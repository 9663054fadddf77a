#include "platform/modInputMethod.h"

InputMethodChoice ChooseInputMethod(const QByteArray &module, const QByteArray &modifiers)
{
    const QByteArray wanted = module.toLower();
    if (wanted == "ibus" || wanted == "compose" || wanted == "none")
        return {wanted, false};
    // Fcitx speaks the protocol on the session bus, as IBus does for programs in a sandbox. Where neither runs, the toolkit
    // falls back on dead keys by itself.
    return {"ibus", wanted.contains("fcitx") || modifiers.contains("fcitx")};
}
