// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/PageFont.h"

#include <QFontDatabase>
#include <QStringList>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The font family of the page; empty if no Japanese family has a fixed pitch.
QString PageFamily()
{
    const QStringList families = QFontDatabase::families(QFontDatabase::Japanese);
    for (const QString &family : {u"MS Gothic"_s, u"ＭＳ ゴシック"_s, u"IPAGothic"_s, u"IPAゴシック"_s})
        if (families.contains(family))
            return family;
    QString fixedPitch;
    for (const QString &family : families) {
        if (!QFontDatabase::isFixedPitch(family))
            continue;
        if (family.contains(u"JP"_s) || fixedPitch.isEmpty())
            fixedPitch = family;
    }
    return fixedPitch;
}

} // namespace

QFont PageFont()
{
    const QString family = PageFamily();
    QFont font = family.isEmpty() ? QFontDatabase::systemFont(QFontDatabase::FixedFont) : QFont(family);
    font.setStyleHint(QFont::Monospace);
    return font;
}

bool HasPageFont()
{
    return !PageFamily().isEmpty();
}
