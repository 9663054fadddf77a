// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "base/modProduct.h"

using namespace Qt::Literals::StringLiterals;

QString ProductName()
{
    return u"瞬記帳"_s;
}

QString VersionText()
{
    return QStringLiteral(KOTOBAN_VERSION);
}
