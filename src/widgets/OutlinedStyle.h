// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Qt's own style with visible outlines. Qt derives them from a darker shade of the window colour, so that on a dark or
// high-contrast palette empty boxes, fields and buttons have none.
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

  private:
    OutlinedStyle();
};
