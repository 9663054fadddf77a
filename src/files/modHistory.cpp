#include "files/modHistory.h"

#include "base/modDateText.h"
#include "base/modFile.h"
#include "store/modDB_SQLite.h"

#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A number in a field of the given width: blanks in front, digits that do not fit lost on the left.
QString RightAligned(qint64 number, int width)
{
    return QString::number(number).rightJustified(width).right(width);
}

} // namespace

History ReadHistory(StudyDatabase &database, const QDate &endDate, int weeks, const QString &userName)
{
    History history;
    history.endDate = endDate;
    history.weeks = weeks;
    const int dayCount = weeks * 7;
    ResultTable table;
    // The totals would only tell of the same fault again.
    if (!DBSelRecKotoban(database, endDate, dayCount, userName, &table, false))
        return history;
    history.isRead = true;
    QString lastDay;
    for (int row = 1; row < int(table.size()); ++row) {
        const QString day = database.SQLite3GetColumn(table, row, u"ymd_sta"_s).left(10);
        const QString startTime = database.SQLite3GetColumn(table, row, u"hms_sta"_s);
        const QString end = database.SQLite3GetColumn(table, row, u"dt_end"_s);
        const int answers = database.SQLite3GetColumn(table, row, u"num_answer"_s).toInt();
        // A clock that was set back in between makes no time studied, and no negative one.
        const qint64 seconds = qMax(qint64(0), SecondsBetween(day + u' ' + startTime, end));
        if (history.days.empty() || day != lastDay) { // a foreign table may have no dates
            const QDate date = DateFromText(day);
            history.lines += date.isValid() ? DateWithWeekday(date) : day;
            history.days.push_back({date, 0, 0});
            lastDay = day;
        }
        history.days.back().seconds += seconds;
        history.days.back().answers += answers;
        history.lines +=
            HistoryLine(startTime, seconds, answers, database.SQLite3GetColumn(table, row, u"file_name"_s));
    }
    // The total is the plain sum of all rows, and that is meant: a session of less than no time lessens it.
    history.totalTime = HoursMinutesSeconds(qMax(qint64(0), DBSumTimeKotoban(database, endDate, dayCount, userName)));
    history.totalAnswers = QString::number(DBSumAnsKotoban(database, endDate, dayCount, userName));
    return history;
}

int ReadWeeks(const QString &text)
{
    static const QRegularExpression wholeNumber(u"^[0-9]{1,4}$"_s);
    return wholeNumber.match(text).hasMatch() ? text.toInt() : 0;
}

QString HistoryLine(const QString &startTime, qint64 seconds, int answers, const QString &fileName)
{
    const qint64 minutes = seconds / 60;
    // An ideographic space is as wide as the sign for minutes.
    const QString minutesText = minutes >= 1 ? QString(RightAligned(minutes, 3) + u'分') : u"   　"_s;
    return startTime.left(5) + u"   "_s + minutesText + RightAligned(seconds % 60, 2) + u"秒"_s +
           RightAligned(answers, 4) + u"問 "_s + fileName;
}

QString HoursMinutesSeconds(qint64 seconds)
{
    const QString hours = seconds >= 3600 ? QString(QString::number(seconds / 3600) + u"時間 "_s) : QString();
    return hours + QString::number(seconds / 60 % 60) + u"分 "_s + QString::number(seconds % 60) + u'秒';
}

QString ReportFileName(const QString &userName, const QDate &today, int weeks)
{
    return FileNamePart(userName) + u"_瞬記帳学習記録"_s + today.toString(u"yyyy_MMdd") + u"までの"_s +
           QString::number(weeks) + u"週分.txt"_s;
}

QString ReportText(const History &history)
{
    QString text;
    for (const QString &line : history.lines)
        text += line + u"\r\n"_s;
    return text + u"総学習時間＝"_s + history.totalTime + u"  総回答数＝"_s + history.totalAnswers + u"\r\n"_s;
}
