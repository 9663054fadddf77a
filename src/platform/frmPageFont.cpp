#include "platform/frmPageFont.h"

#include <QFontDatabase>
#include <QStringList>

using namespace Qt::Literals::StringLiterals;

QFont PageFont()
{
    const QStringList families = QFontDatabase::families(QFontDatabase::Japanese);
    for (const QString &family : {u"MS Gothic"_s, u"ＭＳ ゴシック"_s, u"IPAGothic"_s, u"IPAゴシック"_s})
        if (families.contains(family))
            return QFont(family);
    QString fixedPitch;
    for (const QString &family : families) {
        if (!QFontDatabase::isFixedPitch(family))
            continue;
        if (family.contains(u"JP"_s) || fixedPitch.isEmpty())
            fixedPitch = family;
    }
    QFont font = fixedPitch.isEmpty() ? QFontDatabase::systemFont(QFontDatabase::FixedFont) : QFont(fixedPitch);
    font.setStyleHint(QFont::Monospace);
    return font;
}
