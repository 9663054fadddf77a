// Keeps an Enter that is pressed while the input method still converts from pressing a window's default button. Most
// input methods take that key for themselves; some pass it on before the conversion is over.
#pragma once

#include <QObject>

class CompositionGuard : public QObject
{
    Q_OBJECT

  public:
    /// Watches over every text box of the application for as long as it lives.
    CompositionGuard();

  protected:
    bool eventFilter(QObject *object, QEvent *event) override;

  private:
    QObject *m_composing = nullptr; // the widget with text that is not yet converted
};
