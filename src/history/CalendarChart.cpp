// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "history/CalendarChart.h"

#include "base/modDateText.h"
#include "widgets/Contrast.h"
#include "widgets/Measures.h"

#include <QPainter>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double SquareRadius = 1.5;
constexpr double EmsBelow = 4.2; ///< for the legend and the sentence

} // namespace

CalendarChart::CalendarChart(const StudyTallies &tallies, QWidget *parent)
    : DayChart(u"picCalendar"_s, u"この1年の暦"_s, parent), m_tallies(tallies)
{
}

void CalendarChart::ShowRead(const QDate &today)
{
    if (m_tallies.HasFailed())
        m_year = u"読めませんでした"_s;
    else
        m_year = IsRead() ? YearSentence(m_tallies, today) : u"読み込み中…"_s;
    DayChart::ShowRead(today, m_year);
}

QString CalendarChart::Sentence() const
{
    if (Chosen().IsEmpty() && !IsRead())
        return DayChart::Sentence();
    const QDate &day = Chosen().IsEmpty() ? Today() : Chosen().last;
    return DaySentence(day, m_tallies.OnDay(day));
}

/// Whether all days of the year have been read.
bool CalendarChart::IsRead() const
{
    const QDate first = m_tallies.FirstReadDay();
    return first.isValid() && first <= Today().addDays(1 - CalendarDays);
}

QRectF CalendarChart::Area() const
{
    const double margin = Ems(fontMetrics(), 0.9);
    return QRectF(rect()).adjusted(margin, 0, -margin, -Ems(fontMetrics(), EmsBelow));
}

CalendarPlaces CalendarChart::Places() const
{
    return CalendarPlaces(Today(), Area().size(), Ems(fontMetrics(), 1));
}

bool CalendarChart::HasDays(const DaySpan &days) const
{
    return IsRead() && days.last <= Today() && days.last > Today().addDays(-CalendarDays);
}

DaySpan CalendarChart::DaysAt(const QPointF &point) const
{
    const QDate day = Places().DayAt(point - Area().topLeft());
    return IsRead() ? DaySpan{day, day} : DaySpan();
}

DaySpan CalendarChart::DaysAfterKey(int key) const
{
    if (!IsRead())
        return DaySpan();
    const CalendarPlaces places = Places();
    const QDate chosen = Chosen().last;
    const auto days = [&](const QDate &day) {
        const QDate shown = qBound(places.FirstDay(), chosen.isValid() ? day : Today(), Today());
        return DaySpan{shown, shown};
    };
    switch (key) {
    case Qt::Key_Up:
        return days(chosen.addDays(-1));
    case Qt::Key_Down:
        return days(chosen.addDays(1));
    case Qt::Key_Left:
        return days(chosen.addDays(-7));
    case Qt::Key_Right:
        return days(chosen.addDays(7));
    case Qt::Key_Home:
        return {places.FirstDay(), places.FirstDay()};
    case Qt::Key_End:
        return {Today(), Today()};
    default:
        return DaySpan();
    }
}

QString CalendarChart::TextOf(const DaySpan &days) const
{
    const StudySum sum = m_tallies.OnDay(days.last);
    return ShortDayText(days.last, Today()) + u' ' + (sum.answers > 0 ? StudySumText(sum) : u"なし"_s);
}

void CalendarChart::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    PaintFocus(&painter);
    if (!IsRead()) {
        PaintNote(&painter, m_year);
        return;
    }
    painter.translate(Area().topLeft());
    painter.setRenderHint(QPainter::Antialiasing);
    const CalendarPlaces places = Places();
    const ChartColours colours = ChartColoursOn(palette());
    painter.setPen(Qt::NoPen);
    for (QDate day = places.FirstDay(); day <= Today(); day = day.addDays(1)) {
        painter.setBrush(colours.steps[size_t(CalendarStep(m_tallies.OnDay(day)))]);
        painter.drawRoundedRect(places.Square(day), SquareRadius, SquareRadius);
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(palette().color(QPalette::Text));
    painter.drawRoundedRect(places.Square(Today()).adjusted(-1, -1, 1, 1), SquareRadius, SquareRadius);
    if (const QDate chosen = Chosen().last; chosen >= places.FirstDay() && chosen <= Today())
        PaintChoice(&painter, places.Square(chosen));
    PaintNames(&painter, places);
    PaintBelow(&painter, places);
}

void CalendarChart::PaintNames(QPainter *painter, const CalendarPlaces &places) const
{
    painter->setPen(DimText());
    for (const CalendarPlaces::MonthName &month : places.MonthNames())
        painter->drawText(month.bottomLeft, QString::number(month.day.month()) + u'月');
    for (const int row : {1, 3, 5}) {
        const QRectF place = places.WeekdayName(row);
        const double lineHeight = fontMetrics().height();
        const QRectF line(place.left(), place.center().y() - lineHeight / 2, place.width(), lineHeight);
        painter->drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                          QString(Weekday(Today().addDays(row - Today().dayOfWeek()))));
    }
}

/// The legend and the sentence about the year.
void CalendarChart::PaintBelow(QPainter *painter, const CalendarPlaces &places) const
{
    const ChartColours colours = ChartColoursOn(palette());
    const std::array<QString, CalendarSteps> names = {u"なし"_s, u"15分未満"_s, u"30分未満"_s, u"1時間未満"_s,
                                                      u"1時間以上"_s};
    const double side = Ems(fontMetrics(), 0.6);
    double left = Ems(fontMetrics(), 2);
    double room = Area().width() - left;
    for (const QString &name : names)
        room -= side + IconGap(fontMetrics()) + fontMetrics().horizontalAdvance(name);
    const double gap =
        qBound(Ems(fontMetrics(), 0.3) * 1.0, room / double(names.size()), Ems(fontMetrics(), 1.2) * 1.0);
    const double top = places.Bottom() + Ems(fontMetrics(), 0.6);
    const double lineHeight = fontMetrics().height();
    for (size_t step = 0; step < names.size(); ++step) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(colours.steps[step]);
        painter->drawRoundedRect(QRectF(left, top + (lineHeight - side) / 2, side, side), SquareRadius, SquareRadius);
        left += side + IconGap(fontMetrics());
        painter->setPen(DimText());
        painter->drawText(QPointF(left, top + fontMetrics().ascent()), names[step]);
        left += fontMetrics().horizontalAdvance(names[step]) + gap;
    }
    const double sentenceTop = top + lineHeight + Ems(fontMetrics(), 0.5);
    if (sentenceTop + lineHeight > height()) // a low window
        return;
    painter->setPen(palette().color(QPalette::Text));
    painter->drawText(QPointF(Ems(fontMetrics(), 2), sentenceTop + fontMetrics().ascent()), m_year);
}
