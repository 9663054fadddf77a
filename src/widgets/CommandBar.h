// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// A bar of commands in one row. What does not fit goes into a menu at its right end, whose button is always there.
#pragma once

#include "widgets/PaintedIcon.h"
#include "widgets/modBarFit.h"

#include <QKeySequence>
#include <QList>
#include <QWidget>

class BarButton;
class ElidedLabel;
class QAbstractButton;
class QAction;
class QHBoxLayout;
class QLabel;
class QMenu;

class CommandBar : public QWidget
{
    Q_OBJECT

  public:
    /// @param titleName  object name of the title at the left, which takes what space there is, at least eight ems
    /// @param window  window of the bar, whose keys are those of the hidden controls
    CommandBar(const QString &titleName, QWidget *window);

    /// Sets the next control off from those before it by a line.
    void StartGroup();

    /// Adds a control at the right; its text, its shortcut and its connections are the caller's. The keyboard reaches
    /// the controls in this order.
    /// @param menuButton  opens a menu that it has already, from which the control's states can be chosen; it stands
    /// right beside the control, and the menu stands for both in that of the bar. Or null.
    void Add(QAbstractButton *control, BarButton *menuButton = nullptr);

    /// Sets which controls go into the menu, the first to go first; others always stay.
    void SetLeavingOrder(const QList<QAbstractButton *> &controls);

    /// Adds an entry that the menu always has, below those of hidden controls; null adds a separator.
    void AddToMenu(QAction *action);

    ElidedLabel *Title() const
    {
        return m_title;
    }

    BarButton *MenuButton() const
    {
        return m_menuButton;
    }

    /// Adds a remark in secondary colour right of the title, whose place is kept while it is hidden.
    QLabel *AddRemark(const QString &name, const QString &text);

    QSize sizeHint() const override;        ///< with all controls
    QSize minimumSizeHint() const override; ///< with those that always stay
    bool eventFilter(QObject *watched, QEvent *event) override;

  protected:
    /// A control to be added.
    /// @param key  of the control; its letter is shown while Alt is held
    template <typename Control>
    Control *NewCommand(const QString &name, Icon icon, const QString &text, const QString &key, const QString &toolTip)
    {
        auto *const control = new Control(name, icon, text, this);
        control->setShortcut(QKeySequence(key));
        control->setToolTip(toolTip);
        return control;
    }

    /// An entry to be added to the menu, whose key works in the window.
    QAction *NewEntry(const QString &name, const QString &text);

    bool event(QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

  private:
    /// A control with what belongs to it.
    struct Command
    {
        QAbstractButton *control;
        BarButton *menuButton; ///< or null
        QWidget *line;         ///< before it; null unless it starts a group
        QAction *entry;        ///< takes its key while it or the bar is hidden, when its own key does nothing

        QWidget *Last() const;
    };

    BarFit FitIn(int widthPx) const;
    int TitlePx() const;
    void Fit();
    void ShowLetters(bool areShown);
    void UpdateEntries();
    void AdaptToFont();

    QWidget *m_window;
    ElidedLabel *m_title;
    QLabel *m_remark = nullptr;
    QHBoxLayout *m_row;
    BarButton *m_menuButton;
    QMenu *m_menu;
    QAction *m_belowHidden; // separator between entries of hidden controls and others
    std::vector<Command> m_commands;
    std::vector<size_t> m_leaving; // indices of commands
    bool m_startsGroup = false;
};
