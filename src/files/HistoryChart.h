// A small picture of the study history: minutes studied per day as bars, answers as a line.
#pragma once

#include "files/modHistory.h"

#include <QWidget>

class HistoryChart : public QWidget
{
    Q_OBJECT

  public:
    explicit HistoryChart(QWidget *parent);

    void SetHistory(const History &history);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent *event) override;

  private:
    QDate m_endDate;
    int m_dayCount = 0;
    std::vector<DayTotal> m_days;
};
