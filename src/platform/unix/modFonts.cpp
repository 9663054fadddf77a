// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modFonts.h"

QString FontAdvice()
{
    return QStringLiteral("パッケージ fonts-ipafont-gothic をインストールしてください。\r\n\r\n"
                          "No Japanese fixed-pitch font was found: please install the package fonts-ipafont-gothic.");
}

// Names in Qt's and GTK's themes for which fontconfig chooses a font.
bool IsNamedByDesktop(QStringView family)
{
    return family != u"Sans Serif" && family != u"Sans";
}
