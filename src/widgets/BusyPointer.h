// A busy pointer for what takes longer than half a second.
#pragma once

#include <QElapsedTimer>

class BusyPointer
{
  public:
    BusyPointer();
    ~BusyPointer();
    Q_DISABLE_COPY_MOVE(BusyPointer)

    /// To be called now and then while the work goes on. Once it has taken half a second, shows the pointer and lets
    /// the windows paint; keys and clicks wait.
    void Tick();

  private:
    QElapsedTimer m_elapsed;
    bool m_isShown = false;
};
