// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modInputMethod.h"

#include <QSysInfo>

namespace {

constexpr char moduleName[] = "QT_IM_MODULE";
constexpr char portalName[] = "IBUS_USE_PORTAL";

/// @param value  null unsets the variable
[[maybe_unused]] void SetVariable(const char *name, const QByteArray &value)
{
    if (value.isNull())
        qunsetenv(name);
    else
        qputenv(name, value);
}

} // namespace

InputMethodScope::InputMethodScope() : m_module(qgetenv(moduleName)), m_portal(qgetenv(portalName))
{
#ifdef QT_STATIC
    // libdbus aborts the program if it looks for IBus on a machine without an ID.
    if (QSysInfo::machineUniqueId().isEmpty())
        return;
    const InputMethodChoice choice = ChooseInputMethod(m_module, qgetenv("XMODIFIERS"));
    SetVariable(moduleName, choice.module);
    if (choice.isPortal)
        SetVariable(portalName, "1");
#endif
}

InputMethodScope::~InputMethodScope() // NOLINT(modernize-use-equals-default): a static Qt needs it
{
#ifdef QT_STATIC
    SetVariable(moduleName, m_module);
    SetVariable(portalName, m_portal);
#endif
}
