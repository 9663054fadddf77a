// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Qt's own style with visible outlines, sizes that grow with the font, and one order of buttons. Qt derives outlines
// from a darker shade of the window colour, so that on a dark or high-contrast palette empty boxes, fields and buttons
// have none. The button that Enter presses is filled; a ring around a control shows the keyboard focus, so that the two
// never look alike.
#pragma once

#include <QPointer>
#include <QProxyStyle>

class QFocusFrame;
class QStyleOptionButton;

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
    void drawItemText(QPainter *painter, const QRect &rect, int flags, const QPalette &palette, bool isEnabled,
                      const QString &text, QPalette::ColorRole role) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption *option = nullptr,
                    const QWidget *widget = nullptr) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl part,
                         const QWidget *widget) const override;
    QRect subElementRect(SubElement element, const QStyleOption *option, const QWidget *widget) const override;
    int styleHint(StyleHint hint, const QStyleOption *option = nullptr, const QWidget *widget = nullptr,
                  QStyleHintReturn *returnData = nullptr) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &contents,
                           const QWidget *widget) const override;

  private:
    OutlinedStyle();

    void ShowFocus(QWidget *focused);
    void FollowFocus();
    void DrawLabelWithIcon(const QStyleOptionButton &button, QPainter *painter) const;

    QPointer<QFocusFrame> m_focusFrame; // moves into the window of the control that has the focus
};
