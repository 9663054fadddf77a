#include "platform/modDateText.h"

using namespace Qt::Literals::StringLiterals;

QString DateText(const QDate &date)
{
    return date.toString(u"yyyy/MM/dd");
}

QString TimeText(const QDateTime &moment)
{
    return moment.toString(u"HH:mm:ss");
}

QString DateTimeText(const QDateTime &moment)
{
    return moment.toString(u"yyyy/MM/dd HH:mm:ss");
}

QString DateWithWeekday(const QDate &date)
{
    const QStringView weekdays = u"月火水木金土日"; // QDate counts from Monday, 1
    return DateText(date) + u'(' + weekdays[date.dayOfWeek() - 1] + u')';
}
