// The toolkit's own style with outlines that can be seen. That style makes them from a darker shade of the window, so
// that on a dark or a high-contrast palette empty boxes, fields and buttons have none.
#pragma once

#include <QProxyStyle>

class OutlinedStyle : public QProxyStyle
{
  public:
    /// Gives the program this style where the one it has is the toolkit's own; those of desktops are left alone.
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
