// Tells a key that is pressed from one that is held. A held key repeats, usually with the toolkit's flag for it; an X
// server without detectable auto-repeat, however, sends each repetition as a release and a press of the same time, and
// the flag is missing where the press has not arrived yet when the release is looked at.
#pragma once

#include <QObject>

class QKeyEvent;

class HeldKeyFilter : public QObject
{
    Q_OBJECT

  public:
    /// Watches the key releases of all windows of the application for as long as it lives, so that a key that is held
    /// while one window makes room for another is known there. Blocks no event.
    HeldKeyFilter();

    /// Whether a key press is a new one and no repetition. May be asked any number of times about the same event.
    bool IsFresh(const QKeyEvent &press) const;

  protected:
    bool eventFilter(QObject *object, QEvent *event) override;

  private:
    int m_releasedKey = 0;
    quint64 m_releasedMs = 0;
};
