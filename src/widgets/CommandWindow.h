// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The form of the windows that carry out a command with a file: the file, the choices, and the buttons that answer. The
// buttons stay in view when the rest has to scroll.
#pragma once

#include "base/modParagraph.h"
#include "widgets/frmWait.h"

#include <QDialog>

#include <functional>

class ElidedLabel;
class frmMsg;
class QAbstractButton;
class QCheckBox;
class QPushButton;
class QRadioButton;
class QVBoxLayout;

class CommandWindow : public QDialog
{
    Q_OBJECT

  protected:
    /// @param name  object name of the window
    CommandWindow(const QString &name, frmMsg &msg, QWidget *owner);

    /// Adds a line for the file. It is wide enough for names of any length: longer ones are elided.
    /// @param name  object name of the label; that of its caption ends in "Caption"
    /// @param maxChars  longest name that is shown whole, in average characters
    ElidedLabel *AddFileLine(const QString &caption, const QString &name, int maxChars);

    /// What that line shows: the name of a file, or how many there are.
    static QString NameOfFiles(const QStringList &paths);

    /// Adds a heading of what follows.
    void AddHead(const QString &name, const QString &text);

    /// Adds a choice with an optional phrase about it below its caption.
    template <typename Choice>
    Choice *AddChoice(const QString &name, const QString &caption, const QString &toolTip,
                      const QString &meaning = QString())
    {
        auto *const choice = new Choice(caption, this);
        Place(choice, name, toolTip, meaning);
        return choice;
    }

    /// Adds the buttons cmdOK, which Enter presses, and cmdCancel, and sizes the window. To be called last.
    /// @param beside  widget to the left of them; may be null
    /// @param wanted  see FitToScreen
    void AddAnswers(const QString &caption, const QString &toolTip, const QString &toolTipOfCancel,
                    QWidget *beside = nullptr, const QSize &wanted = QSize());

    /// Where everything between the file and the buttons is added.
    QVBoxLayout *Column() const
    {
        return m_column;
    }

    /// Carries out the command for each of several files, in slices that the user can stop. Meanwhile Refuse and Agrees
    /// show nothing: what they would is in the result.
    /// @param caption  what is being done, for the user
    /// @param begin  @return the work on a file; empty after a refusal
    DoneFiles CarryOutForEach(const QString &caption, const QStringList &paths,
                              const std::function<frmWait::Slice(const QString &path)> &begin);

    /// Shows why the command cannot be carried out. @return always false, for callers to return
    bool Refuse(const QString &message);

    /// Asks a question. @return whether the user agrees, for which it is taken while there are several files
    /// @param remark  what the result says then; if empty, the first line of the question
    bool Agrees(const QString &question, const QString &remark = QString());

    virtual void cmdOK_Click() = 0;

    frmMsg &m_msg;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;

  private:
    void Place(QAbstractButton *choice, const QString &name, const QString &toolTip, const QString &meaning);
    void cmdCancel_Click();

    DoneFiles *m_several = nullptr; // while the command is carried out for each of several files
    QString m_fileName;             // of the present one
    QWidget *m_content;
    QVBoxLayout *m_column;
};
