// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modFontAdvice.h"

QString FontAdvice()
{
    return QStringLiteral("パッケージ fonts-ipafont-gothic をインストールしてください。\r\n\r\n"
                          "No Japanese fixed-pitch font was found: please install the package fonts-ipafont-gothic.");
}
