// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "view/StudyStateBar.h"

#include "study/modStudyRound.h"
#include "widgets/BarButton.h"
#include "widgets/Contrast.h"
#include "widgets/Measures.h"
#include "widgets/NamedControls.h"
#include "widgets/NoticePlace.h"
#include "widgets/PageColours.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QProgressBar>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double ProgressEms = 9;
constexpr double NarrowProgressEms = 3;
constexpr double PageOnlyProgressEms = 6;
constexpr int LargestPageOnlyPx = 24; // size of the text while nothing else is around the page
constexpr int NoticeMs = 4000;
constexpr int UndoNoticeMs = 8000;

QString PageText(const QString &number, const QString &count)
{
    return u"%1 / %2 ページ"_s.arg(number, count);
}

/// As many zeros as a number has digits.
QString Digits(int number)
{
    return QString(QString::number(number).size(), u'0');
}

/// A flat bar with round ends.
class ProgressLine : public QProgressBar
{
  public:
    using QProgressBar::QProgressBar;

  protected:
    void paintEvent(QPaintEvent *) override
    {
        const QColor window = palette().color(QPalette::Window);
        const QColor text = palette().color(QPalette::WindowText);
        const QRectF line(0.5, 0.5, width() - 1, height() - 1);
        const double radius = line.height() / 2;
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(palette().color(QPalette::Mid));
        painter.drawRoundedRect(line, radius, radius);
        painter.save();
        painter.setClipRect(0, 0, int(qint64(value()) * width() / maximum()), height());
        painter.setBrush(WithContrast(palette().color(QPalette::Highlight), window, text, ShapeContrast));
        painter.drawRoundedRect(line, radius, radius);
        painter.restore();
        painter.setPen(WithContrast(palette().color(QPalette::Shadow), window, text, ShapeContrast));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(line, radius, radius);
    }
};

} // namespace

StudyStateBar::StudyStateBar(QWidget *parent)
    : QWidget(parent), m_content(new QWidget(this)), m_row(new QHBoxLayout(m_content)),
      prgShown(new ProgressLine(m_content)), lblOnlyHard(AddLabel(u"lblOnlyHard"_s, u"苦手"_s)),
      lblShown(AddLabel(u"lblShown"_s)), lblBlanks(AddLabel(u"lblBlanks"_s)), lblPage(AddLabel(u"lblPage"_s)),
      lblLap(AddLabel(u"lblLap"_s)), m_notices(new NoticePlace(m_content)), lblNumN(AddLabel(u"lblNumN"_s, u"回答"_s)),
      lblNum(AddLabel(u"lblNum"_s, u"0"_s)), lblMinN(AddLabel(u"lblMinN"_s)), lblMin(AddLabel(u"lblMin"_s, u"分"_s)),
      lblSecN(AddLabel(u"lblSecN"_s)), lblSec(AddLabel(u"lblSec"_s, u"秒"_s)), lblZoom(AddLabel(u"lblZoom"_s)),
      cmdZoomOut(ZoomButton(u"cmdZoomOut"_s, u"本文を小さく"_s, u"本文を小さくします (Ctrl+-)　Ctrl+0 で 100 %"_s, -1)),
      cmdZoomIn(ZoomButton(u"cmdZoomIn"_s, u"本文を大きく"_s, u"本文を大きくします (Ctrl++)"_s, 1)),
      cmdBars(new BarButton(u"cmdBars"_s, Icon::Bars, QString(), m_content)),
      m_progress(Group({prgShown, lblOnlyHard})), m_shown(Group({lblShown, lblBlanks})),
      m_clock(Group({lblMinN, lblMin, lblSecN, lblSec})), m_zoom(Group({cmdZoomOut, lblZoom, cmdZoomIn}))
{
    AddControls();
    LayOut();
    DimLabels();
    SetFile(false, 0);
}

void StudyStateBar::AddControls()
{
    prgShown->setObjectName(u"prgShown"_s);
    prgShown->setAccessibleName(u"表示した正解の割合"_s);
    prgShown->setTextVisible(false);
    prgShown->setMinimumWidth(1); // beside its name it may be short
    for (QLabel *const number : {lblShown, lblNum, lblMinN, lblSecN})
        number->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    lblZoom->setAlignment(Qt::AlignCenter);
    // Their accessible names are the numbers they show.
    lblShown->setAccessibleDescription(u"表示した正解"_s);
    lblNum->setAccessibleDescription(u"回答数"_s);
    lblMinN->setAccessibleDescription(u"学習時間の分"_s);
    lblSecN->setAccessibleDescription(u"学習時間の秒"_s);
    lblZoom->setAccessibleDescription(u"本文の大きさ"_s);
    for (QLabel *const label : {lblMinN, lblMin, lblSecN, lblSec}) {
        KeepSizeWhenHidden(label);
        label->hide();
    }
    lblOnlyHard->hide();
    cmdBars->setAccessibleName(u"バーを戻す"_s);
    cmdBars->setToolTip(u"上と下のバーを戻します (Ctrl+F11)"_s);
    connect(cmdBars, &QPushButton::clicked, this, &StudyStateBar::BarsWanted);
    connect(m_notices, &NoticePlace::Chosen, this, &StudyStateBar::NoticeChosen);
    connect(m_notices, &NoticePlace::LineChosen, this, &StudyStateBar::LineChosen);
    connect(m_notices, &NoticePlace::FocusFreed, this, &StudyStateBar::FocusFreed);
}

void StudyStateBar::LayOut()
{
    for (QWidget *const place : std::initializer_list<QWidget *>{m_progress, m_shown, lblPage, lblLap, m_notices,
                                                                 lblNumN, lblNum, m_clock, m_zoom, cmdBars})
        m_row->addWidget(place, place == m_notices ? 1 : 0);
    m_row->setContentsMargins(WindowMargin, 0, WindowMargin, 0);
    auto *const all = new QHBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->addWidget(m_content);
}

QLabel *StudyStateBar::AddLabel(const QString &name, const QString &text)
{
    return NamedLabel(name, text, m_content);
}

/// Controls without a gap between them.
QWidget *StudyStateBar::Group(const QList<QWidget *> &controls)
{
    auto *const group = new QWidget(m_content);
    group->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    auto *const row = new QHBoxLayout(group);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    for (QWidget *const control : controls)
        row->addWidget(control, 0);
    return group;
}

/// It stays enabled at either end of the range, because disabling it would move the focus to another control.
BarButton *StudyStateBar::ZoomButton(const QString &name, const QString &accessibleName, const QString &toolTip,
                                     int steps)
{
    auto *const button = new BarButton(name, steps > 0 ? Icon::Plus : Icon::Minus, QString(), m_content);
    button->setAccessibleName(accessibleName);
    button->setToolTip(toolTip);
    connect(button, &QPushButton::clicked, this, [this, steps] { Q_EMIT ZoomClicked(steps); });
    return button;
}

/// Gives the labels the width of the widest texts that the file can have.
void StudyStateBar::ReserveSpace()
{
    const QFontMetrics font = fontMetrics();
    QFont bold = this->font();
    bold.setBold(true);
    lblShown->setFont(bold);
    const auto reserve = [&font](QLabel *label, const QString &widest) {
        label->setFixedWidth(font.horizontalAdvance(widest));
    };
    lblShown->setFixedWidth(m_blankCount == 0 ? 0 : QFontMetrics(bold).horizontalAdvance(Digits(m_blankCount)));
    reserve(lblBlanks, m_blankCount == 0 ? QString() : u" / "_s + Digits(m_blankCount));
    reserve(lblPage, PageText(m_pageDigits, m_pageDigits));
    reserve(lblLap, u"00周目"_s);
    reserve(lblNumN, lblNumN->text());
    reserve(lblNum, QString(qMax(qsizetype(4), lblNum->text().size()), u'0'));
    reserve(lblMinN, u"000"_s);
    reserve(lblSecN, u"00"_s);
    reserve(lblZoom, u"000 %"_s);
    m_row->setSpacing(GroupGap(font));
    prgShown->setFixedHeight(Ems(font, 0.5));
    lblOnlyHard->setIndent(IconGap(font));
    setFixedHeight(m_isPageOnly ? PageOnlyHeight(font) : StateBarHeight(font));
    Fit();
}

int StudyStateBar::NeededPx(const QList<QWidget *> &places) const
{
    int needed = 2 * WindowMargin + m_notices->minimumSizeHint().width();
    for (const QWidget *const place : places)
        needed += m_row->spacing() + (place->minimumWidth() > 0 ? place->minimumWidth() : place->sizeHint().width());
    return needed;
}

/// Shows what there is room for.
void StudyStateBar::Fit()
{
    m_content->setVisible(m_isOpen || m_isPageOnly);
    if (!m_isOpen && !m_isPageOnly)
        return;
    const QFontMetrics font = fontMetrics();
    QList<QWidget *> places;
    QList<QWidget *> leaving; // the last one first
    if (m_isOpen) {
        places = {m_shown, lblNum, m_clock};
        leaving = {m_progress, lblNumN};
        if (!m_isPageOnly)
            leaving.append({lblLap, lblPage, m_zoom});
        if (m_pageDigits.isEmpty())
            leaving.removeOne(lblPage);
    }
    if (m_isPageOnly)
        places.append(cmdBars);
    m_progress->setFixedWidth(Ems(font, m_isPageOnly ? PageOnlyProgressEms : ProgressEms));
    while (leaving.size() > 2 && NeededPx(places + leaving) > width())
        leaving.removeLast();
    if (NeededPx(places + leaving) > width())
        m_progress->setFixedWidth(Ems(font, NarrowProgressEms));
    while (!leaving.isEmpty() && NeededPx(places + leaving) > width())
        leaving.removeLast();
    for (QWidget *const place : std::initializer_list<QWidget *>{m_progress, m_shown, lblNum, m_clock, lblNumN, lblLap,
                                                                 lblPage, m_zoom, cmdBars})
        place->setVisible((places + leaving).contains(place));
}

void StudyStateBar::SetFile(bool isOpen, int blankCount)
{
    m_isOpen = isOpen;
    m_blankCount = blankCount;
    ReserveSpace();
}

void StudyStateBar::SetPageOnly(bool isPageOnly)
{
    m_isPageOnly = isPageOnly;
    QFont font; // without a size of its own, that of the window
    if (isPageOnly && parentWidget()->fontInfo().pixelSize() > LargestPageOnlyPx)
        font.setPixelSize(LargestPageOnlyPx);
    setFont(font);
    ReserveSpace();
}

void StudyStateBar::ShowZoom(int percent)
{
    lblZoom->setText(QString::number(percent) + u" %"_s);
}

void StudyStateBar::AskForLine(int line, int lineCount)
{
    m_notices->AskForLine(line, lineCount);
}

void StudyStateBar::OfferLine(int line)
{
    if (line > 0)
        m_notices->Put(NoticeTopic::Offer, {.text = u"前回は "_s + QString::number(line) + u" 行（Ctrl+G）"_s,
                                            .offers = {{u"続きから"_s, u"Ctrl+Shift+R"_s, NoticeAction::Resume, true},
                                                       {u"その行へ"_s, u"Ctrl+G"_s, NoticeAction::GoToOffered, true}}});
    else
        m_notices->Remove(NoticeTopic::Offer);
}

void StudyStateBar::OfferNextHard(int hidden)
{
    if (hidden > 0)
        m_notices->Put(NoticeTopic::HardElsewhere, {.text = u"残り "_s + QString::number(hidden),
                                                    .offers = {{u"次の苦手へ"_s, u"Enter"_s, NoticeAction::GoOn}}});
    else
        m_notices->Remove(NoticeTopic::HardElsewhere);
}

void StudyStateBar::ShowNotice(const QString &text)
{
    m_notices->Put(NoticeTopic::Done, {.text = text}, NoticeMs);
}

void StudyStateBar::ShowUndoNotice(const QString &text)
{
    m_notices->Put(NoticeTopic::Done, {.text = text, .offers = {{u"元に戻す"_s, u"Ctrl+Z"_s, NoticeAction::Undo}}},
                   UndoNoticeMs);
}

void StudyStateBar::HideNotice()
{
    m_notices->Remove(NoticeTopic::Done);
}

void StudyStateBar::ShowFileChange(bool isChanged, bool canMend)
{
    if (isChanged && canMend)
        m_notices->Put(NoticeTopic::FileChange, {.text = u"「ファイルを直す」(Alt+C) で開けるようになります"_s,
                                                 .offers = {{u"直す"_s, u"Alt+C"_s, NoticeAction::Mend, true}}});
    else if (isChanged)
        m_notices->Put(NoticeTopic::FileChange, {.text = u"学習ファイルが変更されました"_s,
                                                 .offers = {{u"再読込"_s, u"Alt+R"_s, NoticeAction::ReadAgain}}});
    else
        m_notices->Remove(NoticeTopic::FileChange);
}

void StudyStateBar::ShowNoBlanks(bool hasNone, bool hasFullWidthBrackets)
{
    if (hasNone)
        m_notices->Put(
            NoticeTopic::NoBlanks,
            {.text = hasFullWidthBrackets ? u"空欄なし（［ ］は全角）"_s : u"この学習ファイルには空欄がありません。"_s,
             .offers = {{hasFullWidthBrackets ? u"直す"_s : u"書く"_s, u"Ctrl+B"_s, NoticeAction::Write}}});
    else
        m_notices->Remove(NoticeTopic::NoBlanks);
}

void StudyStateBar::ShowFirstKeys(bool areShown)
{
    if (areShown)
        m_notices->Put(NoticeTopic::FirstKeys, {.text = u"Enter：次の正解　Ctrl+PageDown：次のページ"_s});
    else
        m_notices->Remove(NoticeTopic::FirstKeys);
}

void StudyStateBar::ShowKeyword(const QString &wanted, bool isFound, const QString &where, const QString &wrap)
{
    Notice notice{.text = u"「%1」"_s.arg(wanted) + (isFound ? QString(u"　"_s + where) : u"はありません"_s)};
    if (!wrap.isEmpty())
        notice.text += u'　' + wrap;
    if (isFound)
        notice.offers = {{u"前"_s, u"Shift+F3"_s, NoticeAction::FindPrevious},
                         {u"次"_s, u"F3"_s, NoticeAction::FindNext}};
    notice.offers.push_back({u"終わる"_s, QString(), NoticeAction::EndSearch});
    m_notices->Put(NoticeTopic::Search, notice);
}

void StudyStateBar::HideKeyword()
{
    m_notices->Remove(NoticeTopic::Search);
}

void StudyStateBar::ShowCount(int answers)
{
    const QString count = QString::number(answers);
    const bool isWider = count.size() > lblNum->text().size();
    lblNum->setText(count);
    if (isWider)
        ReserveSpace();
    lblNum->repaint();
}

void StudyStateBar::ShowProgress(const StudyRound &round, const PageInView &page)
{
    const bool isOnlyHard = round.IsOnlyHard();
    const int blanks = isOnlyHard ? round.HardCount() : round.BlankCount();
    const int shown = isOnlyHard ? round.HardShownCount() : round.ShownCount();
    const auto filledPx = [this] { return qint64(prgShown->value()) * prgShown->width() / prgShown->maximum(); };
    const qint64 filledBeforePx = filledPx();
    prgShown->setRange(0, qMax(1, blanks));
    prgShown->setValue(shown);
    if (filledPx() != filledBeforePx)
        prgShown->update(); // the bar itself updates only after nine pixels
    lblShown->setText(blanks == 0 ? QString() : QString::number(shown));
    lblBlanks->setText(blanks == 0 ? QString() : u" / "_s + QString::number(blanks));
    lblPage->setText(PageText(QString::number(page.PageNumber()), QString::number(page.PageCount())));
    lblLap->setText(round.Lap() > 1 ? QString::number(round.Lap()) + u"周目"_s : QString());
    lblOnlyHard->setVisible(isOnlyHard);
    const QString digits = page.isWrapped ? QString() : Digits(page.PageCount());
    if (digits != std::exchange(m_pageDigits, digits))
        ReserveSpace();
}

void StudyStateBar::ShowTime(const ElapsedTime &elapsed)
{
    lblSecN->setText(QString::number(elapsed.seconds));
    if (elapsed.minutes > 0) {
        lblMinN->setText(QString::number(elapsed.minutes));
        lblMinN->show();
        lblMin->show();
    } else {
        lblSecN->show();
        lblSec->show();
        lblMinN->hide();
        lblMin->hide();
    }
}

void StudyStateBar::ClearTime()
{
    lblMinN->clear();
    lblSecN->clear();
    lblMin->hide();
    lblSec->hide();
}

void StudyStateBar::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        ReserveSpace();
    else if (event->type() == QEvent::PaletteChange)
        DimLabels();
}

/// Gives what matters less the colour of secondary text, readable on every desktop.
void StudyStateBar::DimLabels()
{
    for (QLabel *const label : {lblPage, lblNumN})
        label->setPalette(DimmedBarPalette(palette()));
}

void StudyStateBar::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(0, 0, width(), 1, palette().color(QPalette::Mid));
}

void StudyStateBar::resizeEvent(QResizeEvent *)
{
    Fit();
}
