// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Qt's own style with visible outlines, and one order of buttons. Qt derives outlines from a darker shade of the window
// colour, so that on a dark or high-contrast palette empty boxes, fields and buttons have none.
#pragma once

#include <QProxyStyle>

class OutlinedStyle : public QProxyStyle
{
  public:
    /// Installs this style if the program's style is Qt's own; desktop styles are left alone.
    static void Install();

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget = nullptr) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget = nullptr) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                            const QWidget *widget = nullptr) const override;

    /// Puts OK before Cancel on every desktop, as in the message dialog.
    int styleHint(StyleHint hint, const QStyleOption *option = nullptr, const QWidget *widget = nullptr,
                  QStyleHintReturn *returned = nullptr) const override;

  private:
    OutlinedStyle();
};
