// The system's request that the program end: a logout, a shutdown, a "kill". Where a window system brings it as a
// request to close the windows, nothing is left to do here.
#pragma once

#include <QObject>

class EndSignal : public QObject
{
    Q_OBJECT

  public:
    /// Takes the request from now on. There is one such object at a time.
    EndSignal();
    ~EndSignal() override;

    bool WasAsked() const
    {
        return m_wasAsked;
    }

  Q_SIGNALS:
    /// In the thread of this object, from its event loop.
    void Asked();

  private:
    bool m_wasAsked = false;
};
