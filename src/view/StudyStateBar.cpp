// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "view/StudyStateBar.h"

#include "study/modStudyRound.h"
#include "view/LineField.h"
#include "widgets/Contrast.h"
#include "widgets/FlowLayout.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QStackedWidget>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Keeps a control's space while it is hidden, so that nothing moves.
void KeepSizeWhenHidden(QWidget *widget)
{
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
}

QString ShownText(const QString &shown, const QString &blanks)
{
    return u"表示 %1 / %2"_s.arg(shown, blanks);
}

QString HardText(const QString &count)
{
    return u"苦手 "_s + count;
}

QString PlaceText(const QString &topLine, const QString &lastLine, const QString &lineCount)
{
    return u"%1 ～ %2 行 / %3 行"_s.arg(topLine, lastLine, lineCount);
}

QString PageText(const QString &number, const QString &count)
{
    return u"%1 / %2 ページ"_s.arg(number, count);
}

} // namespace

StudyStateBar::StudyStateBar(QWidget *parent)
    : QWidget(parent), lblNum(AddLabel(u"lblNum"_s, u"0"_s)), prgShown(new QProgressBar(this)),
      lblShown(AddLabel(u"lblShown"_s)), lblPlace(AddLabel(u"lblPlace"_s)), lblPage(AddLabel(u"lblPage"_s)),
      lblHard(AddLabel(u"lblHard"_s)), lblOffer(AddLabel(u"lblOffer"_s)), lblNotice(AddLabel(u"lblNotice"_s)),
      m_noticing(new QTimer(this)), lblZoom(AddLabel(u"lblZoom"_s)),
      cmdZoomOut(ZoomButton(u"cmdZoomOut"_s, u"小(&-)"_s, -1)), cmdZoomIn(ZoomButton(u"cmdZoomIn"_s, u"大(&+)"_s, 1)),
      m_lineField(new LineField(this)), m_placeOrField(new QStackedWidget(this)), lblKeyword(AddLabel(u"lblKeyword"_s)),
      lblFileChange(AddLabel(u"lblFileChange"_s, u"学習ファイルが変更されました（Alt+R で再読込）"_s)),
      lblMinN(AddLabel(u"lblMinN"_s)), lblMin(AddLabel(u"lblMin"_s, u"分"_s)), lblSecN(AddLabel(u"lblSecN"_s)),
      lblSec(AddLabel(u"lblSec"_s, u"秒"_s))
{
    lblNum->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    for (const auto &[number, widest] : {std::pair(lblMinN, u"000"_s), {lblSecN, u"00"_s}}) {
        number->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        number->setMinimumWidth(number->fontMetrics().horizontalAdvance(widest));
    }
    // Their accessible names are the numbers they show.
    lblNum->setAccessibleDescription(u"回答数"_s);
    lblMinN->setAccessibleDescription(u"学習時間の分"_s);
    lblSecN->setAccessibleDescription(u"学習時間の秒"_s);
    prgShown->setObjectName(u"prgShown"_s);
    prgShown->setAccessibleName(u"表示した正解の割合"_s);
    prgShown->setTextVisible(false);
    prgShown->setFixedSize(fontMetrics().averageCharWidth() * 8, qMax(8, fontMetrics().height() / 2));
    m_placeOrField->addWidget(lblPlace);
    m_placeOrField->addWidget(m_lineField);
    m_placeOrField->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(m_lineField, &LineField::LineChosen, this, &StudyStateBar::LineChosen);
    connect(m_lineField, &LineField::Left, this, [this] { m_placeOrField->setCurrentWidget(lblPlace); });
    connect(m_lineField, &LineField::Closed, this, &StudyStateBar::LineFieldClosed);
    DimKeyword();
    lblKeyword->hide();
    lblFileChange->hide();
    lblOffer->hide();
    lblNotice->hide();
    lblNotice->setAutoFillBackground(true);
    m_noticing->setObjectName(u"tmrNotice"_s);
    m_noticing->setSingleShot(true);
    m_noticing->setInterval(3000);
    connect(m_noticing, &QTimer::timeout, this, &StudyStateBar::HideNotice);
    for (QWidget *const control : std::initializer_list<QWidget *>{prgShown, lblMinN, lblMin, lblSecN, lblSec})
        KeepSizeWhenHidden(control);
    for (QLabel *const label : {lblMinN, lblMin, lblSecN, lblSec})
        label->hide();

    QLabel *const lblNumN = AddLabel(u"lblNumN"_s, u"回答数："_s);
    auto *const progress = new FlowLayout(fontMetrics().horizontalAdvance(u'あ'));
    for (QWidget *const control :
         {Group({lblNumN, lblNum}), Group({prgShown, lblShown}), static_cast<QWidget *>(lblHard),
          static_cast<QWidget *>(m_placeOrField), static_cast<QWidget *>(lblPage), ZoomGroup(),
          static_cast<QWidget *>(lblOffer), static_cast<QWidget *>(lblKeyword), static_cast<QWidget *>(lblFileChange)})
        progress->addWidget(control);
    auto *const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addLayout(progress, 1);
    QWidget *const clock = Group({lblMinN, lblMin, lblSecN, lblSec});
    lblNotice->raise();
    clock->setMinimumHeight(cmdZoomIn->sizeHint().height()); // as high as the first row, so that both align
    row->addWidget(clock, 0, Qt::AlignTop);
}

void StudyStateBar::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        DimKeyword();
    else if (event->type() == QEvent::FontChange)
        ReserveSpace();
}

/// Dark grey on a light desktop, otherwise a readable grey.
void StudyStateBar::DimKeyword()
{
    const QColor darkGrey(128, 128, 128); // colour 8 of the 16-colour palette
    const QColor window = palette().color(QPalette::Window);
    const QColor text = palette().color(QPalette::WindowText);
    const bool isLight = IsDarker(text, window) && Contrast(darkGrey, window) >= ShapeContrast;
    QPalette dimmed;
    dimmed.setColor(QPalette::WindowText, isLight ? darkGrey : Dimmed(text, window));
    lblKeyword->setPalette(dimmed);
}

QLabel *StudyStateBar::AddLabel(const QString &name, const QString &text)
{
    auto *const label = new QLabel(text, this);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

/// Controls that are never separated by wrapping.
QWidget *StudyStateBar::Group(const QList<QWidget *> &controls)
{
    auto *const group = new QWidget(this);
    auto *const row = new QHBoxLayout(group);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(6);
    for (QWidget *const control : controls)
        row->addWidget(control, 0, Qt::AlignVCenter);
    return group;
}

QWidget *StudyStateBar::ZoomGroup()
{
    cmdZoomOut->setAccessibleName(u"本文を小さく"_s);
    cmdZoomOut->setToolTip(u"本文を小さくします (Ctrl+-)　Ctrl+0 で 100 %"_s);
    cmdZoomIn->setAccessibleName(u"本文を大きく"_s);
    cmdZoomIn->setToolTip(u"本文を大きくします (Ctrl++)"_s);
    lblZoom->setAccessibleDescription(u"本文の大きさ"_s);
    lblZoom->setAlignment(Qt::AlignCenter);
    lblZoom->setMinimumWidth(lblZoom->fontMetrics().horizontalAdvance(u"000 %"_s));
    return Group({cmdZoomOut, lblZoom, cmdZoomIn});
}

/// As with the buttons above the page, a click leaves the focus in the text, and Enter presses the button. It stays
/// enabled at either end of the range, because disabling it would move the focus to another control.
QPushButton *StudyStateBar::ZoomButton(const QString &name, const QString &caption, int steps)
{
    auto *const button = new QPushButton(caption, this);
    button->setObjectName(name);
    button->setFocusPolicy(Qt::TabFocus);
    button->setAutoDefault(true);
    button->setFixedWidth(button->fontMetrics().horizontalAdvance(u"大(+)00"_s));
    connect(button, &QPushButton::clicked, this, [this, steps] { Q_EMIT ZoomClicked(steps); });
    return button;
}

/// Gives the labels the fixed size of the widest texts that the file can have, so that changing a text never changes
/// the layout of the window.
void StudyStateBar::ReserveSpace()
{
    const QString line(QString::number(m_lineCount).size(), u'0');
    const QString blank(QString::number(m_blankCount).size(), u'0');
    const int heightPx = m_lineField->sizeHint().height();
    const auto reserve = [heightPx](QLabel *label, const QString &widest) {
        label->setFixedSize(label->fontMetrics().horizontalAdvance(widest), heightPx);
    };
    reserve(lblNum, QString(qMax(qsizetype(4), lblNum->text().size()), u'0'));
    reserve(lblShown, m_blankCount == 0 ? QString() : ShownText(blank, blank));
    reserve(lblHard, m_blankCount == 0 ? QString() : HardText(blank));
    reserve(lblPlace, m_lineCount == 0 ? QString() : PlaceText(line, line, line));
    reserve(lblPage, m_lineCount == 0 ? QString() : PageText(line, line));
}

void StudyStateBar::SetFile(int lineCount, int blankCount)
{
    m_lineCount = lineCount;
    m_blankCount = blankCount;
    ReserveSpace();
}

void StudyStateBar::ShowZoom(int percent)
{
    lblZoom->setText(QString::number(percent) + u" %"_s);
}

void StudyStateBar::AskForLine(int line, int lineCount)
{
    m_placeOrField->setCurrentWidget(m_lineField);
    m_lineField->Open(line, lineCount);
}

void StudyStateBar::OfferLine(int line)
{
    lblOffer->setText(line > 0 ? u"前回は "_s + QString::number(line) + u" 行（Ctrl+G）"_s : QString());
    lblOffer->setVisible(line > 0);
}

void StudyStateBar::ShowNotice(const QString &text)
{
    lblNotice->setText(text);
    lblNotice->show();
    PlaceNotice();
    m_noticing->start();
}

void StudyStateBar::HideNotice()
{
    m_noticing->stop();
    lblNotice->hide();
}

/// Widens the notice to cover whole controls, so that none sticks out from under it.
void StudyStateBar::PlaceNotice()
{
    QRect area(0, 0, lblNotice->sizeHint().width() + fontMetrics().averageCharWidth() * 2,
               cmdZoomIn->sizeHint().height());
    for (const QObject *const child : children()) {
        const auto *const control = qobject_cast<const QWidget *>(child);
        if (control && control != lblNotice && control->isVisible() && control->geometry().intersects(area))
            area.setRight(qMax(area.right(), control->geometry().right()));
    }
    lblNotice->setGeometry(area);
}

void StudyStateBar::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    PlaceNotice();
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
    const int blanks = round.BlankCount();
    const auto filledPx = [this] { return qint64(prgShown->value()) * prgShown->width() / prgShown->maximum(); };
    const qint64 filledBeforePx = filledPx();
    prgShown->setVisible(blanks > 0);
    prgShown->setRange(0, qMax(1, blanks));
    prgShown->setValue(round.ShownCount());
    if (filledPx() != filledBeforePx)
        prgShown->update(); // the bar itself updates only after nine pixels
    const auto number = [](int n) { return QString::number(n); };
    lblShown->setText(blanks == 0 ? QString() : ShownText(number(round.ShownCount()), number(blanks)));
    lblHard->setText(round.HardCount() == 0 ? QString() : HardText(number(round.HardCount())));
    const bool hasLines = page.lineCount > 0;
    lblPlace->setText(hasLines ? PlaceText(number(page.topLine), number(page.lastLine), number(page.lineCount))
                               : QString());
    lblPage->setText(hasLines ? PageText(number(page.PageNumber()), number(page.PageCount())) : QString());
}

void StudyStateBar::ShowKeyword(const QString &wanted, bool isFound, const QString &where, const QString &wrap)
{
    const int widestPx = fontMetrics().averageCharWidth() * 24; // so that a long word does not push out the result
    lblKeyword->setText(fontMetrics().elidedText(wanted, Qt::ElideMiddle, widestPx) +
                        (isFound ? QString(u"　"_s + where) : u"はありません"_s));
    lblKeyword->show();
    if (!wrap.isEmpty())
        ShowNotice(wrap); // in the row itself it would cause wrapping, and the page would move
}

void StudyStateBar::ShowFileChange(bool isChanged)
{
    lblFileChange->setVisible(isChanged);
}

void StudyStateBar::HideKeyword()
{
    lblKeyword->hide();
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
