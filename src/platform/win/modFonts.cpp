// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modFonts.h"

QString FontAdvice()
{
    return QStringLiteral("Windows の「オプション機能」で「日本語補助フォント」を追加してください。\r\n\r\n"
                          "No Japanese fixed-pitch font was found: please add the optional feature "
                          "\"Japanese Supplemental Fonts\".");
}

// Windows always names one.
bool IsNamedByDesktop(QStringView)
{
    return true;
}
