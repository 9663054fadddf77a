#include "view/StudyStateBar.h"

#include "view/modStudyRound.h"
#include "widgets/FlowLayout.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>

using namespace Qt::Literals::StringLiterals;

StudyStateBar::StudyStateBar(QWidget *parent)
    : QWidget(parent), lblNum(AddLabel(u"lblNum"_s, u"0"_s)), prgShown(new QProgressBar(this)),
      lblShown(AddLabel(u"lblShown"_s)), lblPlace(AddLabel(u"lblPlace"_s)), lblKeyword(AddLabel(u"lblKeyword"_s)),
      lblMinN(AddLabel(u"lblMinN"_s)), lblMin(AddLabel(u"lblMin"_s, u"分"_s)), lblSecN(AddLabel(u"lblSecN"_s)),
      lblSec(AddLabel(u"lblSec"_s, u"秒"_s))
{
    for (QLabel *const number : {lblNum, lblMinN, lblSecN}) {
        number->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        number->setMinimumWidth(number->fontMetrics().horizontalAdvance(u"0000"_s));
    }
    // Their names are their numbers.
    lblNum->setAccessibleDescription(u"回答数"_s);
    lblMinN->setAccessibleDescription(u"学習時間の分"_s);
    lblSecN->setAccessibleDescription(u"学習時間の秒"_s);
    prgShown->setObjectName(u"prgShown"_s);
    prgShown->setAccessibleName(u"表示した正解の割合"_s);
    prgShown->setTextVisible(false);
    prgShown->setFixedSize(fontMetrics().averageCharWidth() * 16, qMax(8, fontMetrics().height() / 2));
    QPalette dimmed = lblKeyword->palette();
    dimmed.setColor(QPalette::WindowText, QColor(128, 128, 128)); // colour 8 of the palette of 16
    lblKeyword->setPalette(dimmed);
    lblKeyword->hide();
    for (QWidget *const control : std::initializer_list<QWidget *>{prgShown, lblMinN, lblMin, lblSecN, lblSec})
        KeepSizeWhenHidden(control);
    for (QLabel *const label : {lblMinN, lblMin, lblSecN, lblSec})
        label->hide();

    QLabel *const lblNumN = AddLabel(u"lblNumN"_s, u"回答数："_s);
    auto *const progress = new FlowLayout(20);
    for (QWidget *const control : {Group({lblNumN, lblNum}), Group({prgShown, lblShown}),
                                   static_cast<QWidget *>(lblPlace), static_cast<QWidget *>(lblKeyword)})
        progress->addWidget(control);
    auto *const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addLayout(progress, 1);
    row->addWidget(Group({lblMinN, lblMin, lblSecN, lblSec}), 0, Qt::AlignTop);
}

QLabel *StudyStateBar::AddLabel(const QString &name, const QString &text)
{
    auto *const label = new QLabel(text, this);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

/// Controls that stay beside each other.
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

void StudyStateBar::ShowCount(int answers)
{
    lblNum->setText(QString::number(answers));
    lblNum->repaint();
}

void StudyStateBar::ShowProgress(const StudyRound &round, const PageInView &page)
{
    const int blanks = round.BlankCount();
    prgShown->setVisible(blanks > 0);
    prgShown->setRange(0, qMax(1, blanks));
    prgShown->setValue(round.ShownCount());
    prgShown->update(); // the bar itself would wait for a change of nine pixels
    lblShown->setText(blanks == 0 ? QString() : QString(u"表示 %1 / %2"_s.arg(round.ShownCount()).arg(blanks)));
    lblPlace->setText(page.lineCount == 0
                          ? QString()
                          : QString(u"%1 ～ %2 行 / %3 行"_s.arg(page.topLine).arg(page.lastLine).arg(page.lineCount)));
}

void StudyStateBar::ShowKeyword(const QString &wanted, bool isFound)
{
    const int widestPx = fontMetrics().averageCharWidth() * 24; // so that a long word does not hide the verdict
    lblKeyword->setText(fontMetrics().elidedText(wanted, Qt::ElideMiddle, widestPx) +
                        (isFound ? QString() : u"はありません"_s));
    lblKeyword->show();
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

void KeepSizeWhenHidden(QWidget *widget)
{
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
}
