// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The program's own message dialog. It is as large as its text, which scrolls if the screen is too small, opens over
// its owner and plays a sound. It accepts no answer until its timer has fired, so that a key press meant for the study
// window cannot answer it by accident; neither can a key that is still held down.
#pragma once

#include "platform/modSystemServices.h"

#include <QDialog>

class QLabel;
class QPushButton;
class QScrollArea;
class QTimer;

/// Which buttons the dialog shows; the values are those of the Windows message box.
enum class MsgStyle
{
    Ok = 0,
    OkCancel = 1,
    YesNo = 4,
};

/// The user's answer.
enum class MsgResult
{
    None = 0, ///< closed without an answer
    Ok = 1,   ///< OK or yes
    Cancel = 2,
    Other = 3, ///< the second of two ways
};

class frmMsg : public QDialog
{
    Q_OBJECT

  public:
    /// @param soundFolder  folder of sounds that are given by name only
    frmMsg(SystemServices &services, const QString &soundFolder);

    /// Shows the message and waits for the answer. One dialog serves all calls; each lays it out anew. A call while the
    /// dialog is open shows its own message after that one has been answered.
    /// @param message  lines separated by CR LF
    /// @param style  any other value first shows a message box "err!", then OK and cancel buttons
    /// @param soundName  file name in the sound folder, or a path with a backslash, which is used as is
    /// @param cancelToolTip  what the cancel button does, if its caption does not tell
    MsgResult DispFrmMsg(QWidget *owner, const QString &message, MsgStyle style, const QString &soundName,
                         const QString &cancelToolTip = {});

    /// Shows why something is refused, with a sound. @return always false, for callers to return
    bool Refuse(QWidget *owner, const QString &message);

    /// Asks a yes-or-no question, with a sound.
    MsgResult Ask(QWidget *owner, const QString &question);

    /// Asks which of two ways to go, with a sound; the first is the default. @param first, second  captions
    /// @return Ok for the first, Other for the second, Cancel or None for neither
    MsgResult AskWhich(QWidget *owner, const QString &question, const QString &first, const QString &second);

    /// Plays a sound, named as in DispFrmMsg.
    void PlayNamedSound(const QString &soundName);

  protected:
    bool eventFilter(QObject *object, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

  private:
    void Form_Load();
    void Form_Activate();
    struct Turn;
    MsgResult Take(Turn turn);
    void ShowTurn();
    void SelectButtons(const Turn &turn);
    void LayOut();
    void MoveOver(const QWidget *owner);
    void Answer(MsgResult result);
    void cmdOK_Click();
    void cmdOther_Click();
    void cmdCancel_Click();
    void Timer1_Timer();

    SystemServices &m_services;
    QString m_soundFolder;
    QScrollArea *fraMsg; // scrolls lblMsg if it does not fit on the screen
    QLabel *lblMsg;
    QPushButton *cmdOK;
    QPushButton *cmdOther; // only where there are two ways
    QPushButton *cmdCancel;
    QTimer *Timer1;
    QList<Turn *> m_turns; // calls to answer, the first of which is shown
};
