// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "write/WriteStateBar.h"

#include "text/modCheckText.h"
#include "widgets/Measures.h"
#include "widgets/NamedControls.h"
#include "widgets/NoticePlace.h"
#include "widgets/PageColours.h"
#include "write/FindField.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype ManyBytes = 90; // from here on the length is emphasised

QString LineText(const QString &line, const QString &lineCount)
{
    return u"%1 行目 / %2 行"_s.arg(line, lineCount);
}

QString BlanksText(const QString &count)
{
    return u"空欄 "_s + count;
}

/// The widest number that a file of a number of lines shows: at least three digits, so that few files gain one.
QString WidestNumber(int lineCount)
{
    return QString(qMax(3, int(QString::number(lineCount).size())), u'0');
}

} // namespace

WriteStateBar::WriteStateBar(QWidget *parent)
    : QWidget(parent), m_row(new QHBoxLayout(this)), lblLine(NamedLabel(u"lblLine"_s, QString(), this)),
      lblBlanks(NamedLabel(u"lblBlanks"_s, QString(), this)), m_notices(new NoticePlace(this)),
      m_find(new FindField(this)), lblBytes(NamedLabel(u"lblBytes"_s, QString(), this)),
      lblMaxBytes(NamedLabel(u"lblMaxBytes"_s, u" / %1 バイト"_s.arg(MaxLineBytes), this))
{
    lblBytes->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    lblBytes->setAccessibleDescription(u"この行のバイト数"_s);
    m_find->hide();
    m_row->setContentsMargins(WindowMargin, 0, WindowMargin, 0);
    m_row->addWidget(lblLine);
    m_row->addWidget(lblBlanks);
    m_row->addWidget(m_notices, 1);
    m_row->addWidget(m_find, 1);
    auto *const bytes = new QHBoxLayout; // without a gap between them
    bytes->setSpacing(0);
    bytes->addWidget(lblBytes);
    bytes->addWidget(lblMaxBytes);
    m_row->addLayout(bytes);
    connect(m_find, &FindField::Shown, this, [this](bool isShown) {
        m_notices->setVisible(!isShown);
        MakeRoom();
    });
    ShowLine(1, 1);
    ShowBlanks(0);
    ShowBytes(0);
    ReserveSpace();
}

void WriteStateBar::ShowLine(int line, int lineCount)
{
    lblLine->setText(LineText(QString::number(line), QString::number(lineCount)));
    if (WidestNumber(lineCount) != WidestNumber(std::exchange(m_lineCount, lineCount)))
        ReserveSpace();
}

void WriteStateBar::ShowBlanks(int count)
{
    lblBlanks->setText(BlanksText(QString::number(count)));
}

void WriteStateBar::ShowBytes(qsizetype bytes)
{
    m_bytes = bytes;
    lblBytes->setText(QString::number(bytes));
    ShowColours();
}

void WriteStateBar::SetTooLongColour(const QColor &colour)
{
    m_tooLong = colour;
    ShowColours();
}

void WriteStateBar::ShowColours()
{
    QFont font = this->font();
    font.setBold(m_bytes >= ManyBytes);
    lblBytes->setFont(font);
    QPalette colours = palette();
    if (m_bytes > MaxLineBytes && m_tooLong.isValid())
        colours.setColor(QPalette::WindowText, m_tooLong);
    lblBytes->setPalette(colours);
}

void WriteStateBar::ReserveSpace()
{
    const QFontMetrics font = fontMetrics();
    QFont bold = this->font();
    bold.setBold(true);
    const QString widest = WidestNumber(m_lineCount);
    lblLine->setFixedWidth(font.horizontalAdvance(LineText(widest, widest)));
    lblBlanks->setMinimumWidth(font.horizontalAdvance(BlanksText(widest)));
    lblBytes->setMinimumWidth(QFontMetrics(bold).horizontalAdvance(u"000"_s));
    m_row->setSpacing(GroupGap(font));
    setFixedHeight(StateBarHeight(font) + 2 * FocusRingReach); // the field of the search is higher than a notice
    MakeRoom();
}

/// Leaves the whole row to the field of a search if it does not fit beside the rest.
void WriteStateBar::MakeRoom()
{
    int neededPx = m_find->minimumSizeHint().width() + 2 * WindowMargin;
    for (const QLabel *const place : {lblLine, lblBlanks, lblMaxBytes})
        neededPx += m_row->spacing() + qMax(place->minimumWidth(), place->sizeHint().width());
    neededPx += lblBytes->minimumWidth();
    const bool isTight = !m_find->isHidden() && neededPx > width();
    for (QLabel *const place : {lblLine, lblBlanks, lblBytes, lblMaxBytes})
        place->setHidden(isTight);
}

void WriteStateBar::resizeEvent(QResizeEvent *)
{
    MakeRoom();
}

void WriteStateBar::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        ReserveSpace();
    if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange)
        ShowColours();
}

void WriteStateBar::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(0, 0, width(), 1, palette().color(QPalette::Mid));
}
