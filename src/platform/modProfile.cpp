#include "platform/modProfile.h"

bool IsProfileValue(const QString &value)
{
    return !value.contains(u'\r') && !value.contains(u'\n') && !value.contains(QChar::Null);
}

QString ProfileText(const QString &value)
{
    const auto isQuote = [](QChar character) { return character == u'"' || character == u'\''; };
    const bool losesQuotes = value.size() >= 2 && isQuote(value.front()) && value.front() == value.back();
    const bool losesBlanks = value.trimmed() != value;
    return losesQuotes || losesBlanks ? QString(u'"' + value + u'"') : value;
}
