// Window messages that programs agree on by name.
#pragma once

#include <QString>

/// The number of a named window message, 0xC000 to 0xFFFF; the same name, in any case, has the same number.
unsigned RegisterMessageName(const QString &name);
