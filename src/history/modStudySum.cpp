// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "history/modStudySum.h"

using namespace Qt::Literals::StringLiterals;

StudySum SumOf(const RecordedSession &session)
{
    return {qMax(qint64(0), SecondsBetween(session.day, session.startTime, session.end)), session.answers};
}

qint64 StudyMinutes(qint64 seconds)
{
    return seconds > 0 ? qMax(qint64(1), seconds / 60) : 0;
}

QString StudyTimeText(qint64 seconds)
{
    const qint64 minutes = StudyMinutes(seconds);
    const QString hours = minutes >= 60 ? QString(QString::number(minutes / 60) + u"時間"_s) : QString();
    return hours + QString::number(minutes % 60) + u'分';
}

QString StudySumText(const StudySum &sum)
{
    return StudyTimeText(sum.seconds) + u' ' + QString::number(sum.answers) + u'問';
}

QString HoursMinutesSeconds(qint64 seconds)
{
    const QString hours = seconds >= 3600 ? QString(QString::number(seconds / 3600) + u"時間 "_s) : QString();
    return hours + QString::number(seconds / 60 % 60) + u"分 "_s + QString::number(seconds % 60) + u'秒';
}

QString SessionTimeText(qint64 seconds)
{
    return seconds < 60 ? QString(QString::number(seconds) + u'秒') : HoursMinutesSeconds(seconds).remove(u' ');
}
