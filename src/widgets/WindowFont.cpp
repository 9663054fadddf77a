// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/WindowFont.h"

#include "platform/modFonts.h"

#include <QFontDatabase>
#include <QStringList>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Whether there is a family with the Japanese characters. Looks only at this one, unlike QFontDatabase::hasFamily.
bool HasJapanese(const QString &family)
{
    return QFontDatabase::writingSystems(family).contains(QFontDatabase::Japanese);
}

} // namespace

QFont WindowFont(const QFont &desktop)
{
    // Some systems list a font under its Japanese name.
    const QStringList preferred = {u"Yu Gothic UI"_s, u"Meiryo"_s,        u"メイリオ"_s,  u"Noto Sans CJK JP"_s,
                                   u"IPAPGothic"_s,   u"IPA Pゴシック"_s, u"IPAGothic"_s, u"IPAゴシック"_s};
    const QStringList families = IsNamedByDesktop(desktop.family()) ? desktop.families() : QStringList();
    if (!families.isEmpty() && HasJapanese(families.first()))
        return desktop;
    const auto japanese = std::ranges::find_if(preferred, HasJapanese);
    QFont font = desktop;
    if (japanese != preferred.end())
        font.setFamilies(families + QStringList{*japanese});
    return font;
}
