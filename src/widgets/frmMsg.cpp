// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/frmMsg.h"

#include "base/modFile.h"
#include "base/modLog.h"
#include "base/modProduct.h"
#include "widgets/NamedControls.h"
#include "widgets/ScreenFit.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QTimer>

#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int TimerMs = 300;
constexpr int LabelLeftPx = 14;
constexpr int LabelTopPx = 14;
constexpr int RightOfLabelPx = 10;
constexpr int BelowLabelPx = 60;
constexpr int BelowButtonsPx = 3;
constexpr int ButtonGapPx = 12;

/// A message may quote a line of a file that is not text, and such a line may be of any length.
QString WithLongLinesCut(const QString &message)
{
    constexpr qsizetype longestLine = 300;
    QStringList lines = message.split(u"\r\n"_s);
    for (QString &line : lines)
        if (line.size() > longestLine)
            line = line.left(longestLine) + u'…';
    return lines.join(u'\n');
}

} // namespace

/// One call of DispFrmMsg.
struct frmMsg::Turn
{
    QWidget *owner;
    QString message;
    MsgStyle style;
    QString soundName;
    QString cancelToolTip{};
    QString first{}; // captions of two ways, if there are
    QString second{};
    MsgResult result = MsgResult::None;
    QEventLoop *loop = nullptr; // runs until the answer
};

frmMsg::frmMsg(SystemServices &services, const QString &soundFolder)
    : m_services(services), m_soundFolder(soundFolder), fraMsg(new QScrollArea(this)),
      lblMsg(NamedLabel(u"lblMsg"_s, QString(), nullptr)), cmdOK(new QPushButton(this)),
      cmdOther(new QPushButton(this)), cmdCancel(new QPushButton(this)), Timer1(new QTimer(this))
{
    setObjectName(u"frmMsg"_s);
    fraMsg->setObjectName(u"fraMsg"_s);
    cmdOK->setObjectName(u"cmdOK"_s);
    cmdOther->setObjectName(u"cmdOther"_s);
    cmdCancel->setObjectName(u"cmdCancel"_s);
    Timer1->setObjectName(u"Timer1"_s);
    for (QPushButton *const button : {cmdOK, cmdOther, cmdCancel})
        button->installEventFilter(this);
    connect(cmdOK, &QPushButton::clicked, this, &frmMsg::cmdOK_Click);
    connect(cmdOther, &QPushButton::clicked, this, &frmMsg::cmdOther_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmMsg::cmdCancel_Click);
    connect(Timer1, &QTimer::timeout, this, &frmMsg::Timer1_Timer);
    Form_Load();
}

void frmMsg::Form_Load()
{
    WriteTrace(u"■frmMsg.Form_Load");
    fraMsg->setFrameShape(QFrame::NoFrame);
    fraMsg->setFocusPolicy(Qt::NoFocus);
    fraMsg->setWidget(lblMsg);
    cmdOK->setDefault(true);
    Timer1->setSingleShot(true);
    Timer1->setInterval(TimerMs);
}

void frmMsg::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (!event->spontaneous()) // not when it was only minimised
        Form_Activate();
}

void frmMsg::Form_Activate()
{
    WriteTrace(u"■frmMsg.Form_Activate");
    setWindowTitle(ProductName());
}

MsgResult frmMsg::DispFrmMsg(QWidget *owner, const QString &message, MsgStyle style, const QString &soundName,
                             const QString &cancelToolTip)
{
    return Take(
        {.owner = owner, .message = message, .style = style, .soundName = soundName, .cancelToolTip = cancelToolTip});
}

/// Shows the message, or waits until it can be shown, and then for the answer.
MsgResult frmMsg::Take(Turn turn)
{
    QEventLoop loop;
    turn.loop = &loop;
    m_turns += &turn;
    if (m_turns.size() == 1)
        ShowTurn();
    loop.exec(); // not QDialog::exec(), which cannot be called while the dialog is open
    if (m_turns.removeOne(&turn))
        hide(); // the program ends before the answer
    // The dialog outlives its owners, so it must not remain a child of this one.
    setParent(nullptr, windowFlags());
    if (turn.owner)
        turn.owner->activateWindow(); // not every window system does so automatically
    return turn.result;
}

bool frmMsg::Refuse(QWidget *owner, const QString &message)
{
    DispFrmMsg(owner, message, MsgStyle::Ok, u"notify.wav"_s);
    return false;
}

MsgResult frmMsg::Ask(QWidget *owner, const QString &question)
{
    return DispFrmMsg(owner, question, MsgStyle::YesNo, u"notify.wav"_s);
}

MsgResult frmMsg::AskWhich(QWidget *owner, const QString &question, const QString &first, const QString &second)
{
    return Take({.owner = owner,
                 .message = question,
                 .style = MsgStyle::OkCancel,
                 .soundName = u"notify.wav"_s,
                 .first = first,
                 .second = second});
}

/// Shows the message of the first call that has no answer yet.
void frmMsg::ShowTurn()
{
    if (m_turns.isEmpty())
        return; // the program ends
    const Turn &turn = *m_turns.front();
    setParent(turn.owner, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    // Shown again at once, the same window would count as the one that has the focus already, and never become active.
    // It belongs to its owner by now: without one, a modal owner blocks it, and Qt's X11 plugin, which then passes its
    // focus on, creates it anew while it is being destroyed.
    destroy();
    setModal(true);
    lblMsg->setText(WithLongLinesCut(turn.message));
    SelectButtons(turn);
    cmdCancel->setToolTip(turn.cancelToolTip);
    cmdCancel->setAccessibleDescription(turn.cancelToolTip);
    LayOut();
    MoveOver(turn.owner);
    PlayNamedSound(turn.soundName);
    for (QPushButton *const button : {cmdOK, cmdOther, cmdCancel})
        button->setEnabled(false);
    Timer1->start();
    show();
}

/// Ends a call, however the dialog was closed. Its loop returns after those of the calls made during it.
void frmMsg::hideEvent(QHideEvent *event)
{
    QDialog::hideEvent(event);
    if (event->spontaneous() || m_turns.isEmpty())
        return;
    Timer1->stop();
    m_turns.takeFirst()->loop->quit();
    if (!m_turns.isEmpty())
        QTimer::singleShot(0, this, &frmMsg::ShowTurn);
}

void frmMsg::PlayNamedSound(const QString &soundName)
{
    m_services.PlaySoundFile(soundName.contains(u'\\') ? soundName : JoinPath(m_soundFolder, soundName));
}

// The buttons receive key presses before the dialog does.
bool frmMsg::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent *>(event)->isAutoRepeat())
        return true;
    return QDialog::eventFilter(object, event);
}

// Escape acts like the close button, but, like every key, only once the buttons are enabled.
void frmMsg::keyPressEvent(QKeyEvent *event)
{
    if (event->isAutoRepeat() || (event->key() == Qt::Key_Escape && !cmdOK->isEnabled()))
        return;
    QScrollBar *const bar = fraMsg->verticalScrollBar();
    if (event->key() == Qt::Key_PageDown)
        bar->triggerAction(QScrollBar::SliderPageStepAdd);
    else if (event->key() == Qt::Key_PageUp)
        bar->triggerAction(QScrollBar::SliderPageStepSub);
    else
        QDialog::keyPressEvent(event);
}

void frmMsg::SelectButtons(const Turn &turn)
{
    const MsgStyle style = turn.style;
    const bool isYesNo = style == MsgStyle::YesNo;
    if (!isYesNo && style != MsgStyle::Ok && style != MsgStyle::OkCancel)
        m_services.ShowMessage(u"err!"_s, QString());
    cmdOK->setText(!turn.first.isEmpty() ? turn.first : isYesNo ? u"はい"_s : u"OK"_s);
    cmdOther->setText(turn.second);
    cmdOther->setHidden(turn.second.isEmpty());
    cmdCancel->setText(isYesNo ? u"いいえ"_s : u"キャンセル"_s);
    cmdCancel->setHidden(style == MsgStyle::Ok);
}

void frmMsg::LayOut()
{
    const QSize available = AvailableSize(this);
    std::vector<QPushButton *> buttons;
    QSize button(16 * fontMetrics().averageCharWidth(), cmdOK->sizeHint().height());
    for (QPushButton *const shown : {cmdOK, cmdOther, cmdCancel}) {
        if (shown->isHidden())
            continue;
        buttons.push_back(shown);
        button.setWidth(qMax(button.width(), shown->sizeHint().width()));
    }
    const int belowLabel = qMax(BelowLabelPx, button.height() + 2 * BelowButtonsPx);
    const QSize most = available - QSize(LabelLeftPx + RightOfLabelPx, LabelTopPx + belowLabel);

    // A word longer than a line is not broken; the message then scrolls horizontally too.
    const int barPx = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    lblMsg->setWordWrap(false);
    QSize size = lblMsg->sizeHint();
    if (size.width() > available.width() * 4 / 5) {
        lblMsg->setWordWrap(true);
        size.setWidth(qMax(available.width() * 4 / 5, lblMsg->minimumSizeHint().width()));
        size.setHeight(lblMsg->heightForWidth(size.width()));
    }
    lblMsg->resize(size);
    if (size.height() > most.height())
        size.rwidth() += barPx;
    if (size.width() > most.width())
        size.rheight() += barPx;
    size = size.boundedTo(most);
    fraMsg->setGeometry(QRect(QPoint(LabelLeftPx, LabelTopPx), size));
    fraMsg->verticalScrollBar()->setValue(0);

    const int buttonsWidth = int(buttons.size()) * (button.width() + ButtonGapPx) - ButtonGapPx;
    // With a short text, the buttons determine the width.
    const int width = qMax(LabelLeftPx + size.width() + RightOfLabelPx, buttonsWidth + 2 * LabelLeftPx);
    const int height = LabelTopPx + size.height() + belowLabel;
    setFixedSize(width, height);
    int left = (width - buttonsWidth) / 2;
    for (QPushButton *const shown : buttons) {
        shown->setGeometry(QRect(QPoint(left, height - BelowButtonsPx - button.height()), button));
        left += button.width() + ButtonGapPx;
    }
}

void frmMsg::MoveOver(const QWidget *owner)
{
    const QRect over = owner ? owner->window()->frameGeometry() : QGuiApplication::primaryScreen()->availableGeometry();
    const QRect screenArea = (owner ? owner->screen() : QGuiApplication::primaryScreen())->availableGeometry();
    const QSize frame = screenArea.size() - AvailableSize(this);
    const int left = over.left() + (over.width() - width()) / 2;
    const int top = over.top() + (over.height() - height()) / 8;
    move(qMax(screenArea.left(), qMin(left, screenArea.right() + 1 - width() - frame.width())),
         qMax(screenArea.top(), qMin(top, screenArea.bottom() + 1 - height() - frame.height())));
}

void frmMsg::Answer(MsgResult result)
{
    if (!m_turns.isEmpty()) // assistive technology may press a button of a hidden window
        m_turns.front()->result = result;
    hide();
}

void frmMsg::cmdOK_Click()
{
    WriteTrace(u"■frmMsg.cmdOK_Click");
    Answer(MsgResult::Ok);
}

void frmMsg::cmdOther_Click()
{
    WriteTrace(u"■frmMsg.cmdOther_Click");
    Answer(MsgResult::Other);
}

void frmMsg::cmdCancel_Click()
{
    WriteTrace(u"■frmMsg.cmdCancel_Click");
    Answer(MsgResult::Cancel);
}

void frmMsg::Timer1_Timer()
{
    WriteTrace(u"■frmMsg.Timer1_Timer");
    for (QPushButton *const button : {cmdOK, cmdOther, cmdCancel})
        button->setEnabled(true);
    cmdOK->setFocus();
}
