// The program's own message dialog. It is as large as its text, which scrolls where the screen is too small, stands
// over the window that asks, plays a sound as it opens and takes no answer before its timer has fired once, so that a
// key press still meant for the study window cannot answer it by accident; nor does a key that is held since then.
#pragma once

#include "platform/modSystemServices.h"
#include "widgets/HeldKeyFilter.h"

#include <QDialog>

class QLabel;
class QPushButton;
class QScrollArea;
class QTimer;

/// Which buttons the dialog shows; the values are those of the system's message box.
enum class MsgStyle
{
    Ok = 0,
    OkCancel = 1,
    YesNo = 4,
};

/// What the learner answered.
enum class MsgResult
{
    None = 0, ///< closed without an answer
    Ok = 1,   ///< OK or yes
    Cancel = 2,
};

class frmMsg : public QDialog
{
    Q_OBJECT

  public:
    /// @param soundFolder  folder of the sounds that are named without one
    frmMsg(SystemServices &services, const QString &soundFolder);

    /// Asks and waits for the answer. One dialog serves all calls; each lays it out from scratch.
    /// @param message  lines separated by CR LF
    /// @param style  for any value that is none of the names, a message box "err!" comes first and the buttons stay as
    /// they are
    /// @param soundName  a name is looked up in the sound folder, a path with a backslash is used as given
    MsgResult DispFrmMsg(QWidget *owner, const QString &message, MsgStyle style, const QString &soundName);

    /// Plays a sound by the same rule of names.
    void PlayNamedSound(const QString &soundName);

  protected:
    bool eventFilter(QObject *object, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void showEvent(QShowEvent *event) override;

  private:
    void Form_Load();
    void Form_Activate();
    void SelectButtons(MsgStyle style);
    void LayOut();
    void PlaceOver(const QWidget *owner);
    void Answer(MsgResult result);
    void cmdOK_Click();
    void cmdCancel_Click();
    void Timer1_Timer();

    SystemServices &m_services;
    QString m_soundFolder;
    HeldKeyFilter m_heldKeys;
    QScrollArea *fraMsg; // what of the message fits on the screen
    QLabel *lblMsg;
    QPushButton *cmdOK;
    QPushButton *cmdCancel;
    QTimer *Timer1;
    MsgResult m_result = MsgResult::None;
};
