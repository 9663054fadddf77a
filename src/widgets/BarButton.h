// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The controls of a bar of commands: flat, with an icon and a text, which are painted in the colours of the palette:
// Highlight for the edge of what is pressed or ticked, AlternateBase for its ground and for that under the pointer.
#pragma once

#include "widgets/PaintedIcon.h"

#include <QCheckBox>
#include <QPushButton>

/// What both kinds of controls have in common. A letter of Alt is set with setShortcut, after the text.
class BarControl
{
  public:
    virtual ~BarControl() = default;
    Q_DISABLE_COPY_MOVE(BarControl)

    /// Shows the letter of the control's shortcut in the place of its icon, as long as Alt is held.
    void ShowLetter(bool isShown);

    /// Sets the colour of the corner of Icon::Hard.
    void SetHardColour(const QColor &colour);

    /// Sets the colours of a ticked control, where they are not those of the palette.
    void SetTickedColours(const QColor &ground, const QColor &text);

    /// Shows a number after the text, with room for three digits from the beginning; 0 shows none.
    void SetCount(int count);

  protected:
    BarControl(QAbstractButton *self, Icon icon);

    QSize Size() const;
    void Paint() const;

  private:
    int Side() const;
    int Margin() const;
    QColor TextColour(bool isTicked) const;
    void PaintGround(QPainter *painter, const QRect &face) const;
    void PaintLetter(QPainter *painter, const QRect &square) const;

    QAbstractButton *m_self;
    Icon m_icon;
    int m_count = -1; // no place for a number
    bool m_showsLetter = false;
    QColor m_hardColour;
    QColor m_tickedGround;
    QColor m_tickedText;
};

/// Makes a control of Qt's one of a bar.
template <typename Control>
class BarWidget : public Control, public BarControl
{
  public:
    QSize sizeHint() const override
    {
        return Size();
    }

    QSize minimumSizeHint() const override
    {
        return Size();
    }

  protected:
    BarWidget(const QString &name, Icon icon, const QString &text, QWidget *parent)
        : Control(text, parent), BarControl(this, icon)
    {
        this->setObjectName(name);
    }

    bool hitButton(const QPoint &at) const override
    {
        return this->rect().contains(at);
    }

    void paintEvent(QPaintEvent *) override
    {
        Paint();
    }
};

class BarButton : public BarWidget<QPushButton>
{
    Q_OBJECT

  public:
    /// @param text  caption without a mnemonic; if it is empty, the caller sets an accessible name
    BarButton(const QString &name, Icon icon, const QString &text, QWidget *parent);
};

class BarCheckBox : public BarWidget<QCheckBox>
{
    Q_OBJECT

  public:
    /// @param text  caption without a mnemonic
    BarCheckBox(const QString &name, Icon icon, const QString &text, QWidget *parent)
        : BarWidget(name, icon, text, parent)
    {
    }
};
