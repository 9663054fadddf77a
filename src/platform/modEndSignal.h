// The end that does not come from the learner: a logout, a shutdown, a "kill", the loss of the display. Where a window
// system brings it as a request to close the windows, nothing is left to do here.
#pragma once

#include <QObject>

#include <functional>

class EndSignal : public QObject
{
    Q_OBJECT

  public:
    /// Takes the system's request from now on; where it is a signal, a second one of the same kind ends the process at
    /// once, whatever it is at. There is one such object at a time.
    EndSignal();
    ~EndSignal() override;

    bool WasAsked() const
    {
        return m_wasAsked;
    }

    /// What is still to be done when the process ends while this object lives, without a request: the toolkit ends it
    /// so when the display is gone. No window may be touched then. An empty function takes it back.
    void SetLastWord(const std::function<void()> &lastWord);

  Q_SIGNALS:
    /// In the thread of this object, from its event loop.
    void Asked();

  private:
    static void SayLastWord();
    void TakeRequests();
    void RefuseRequests();

    bool m_wasAsked = false;
    std::function<void()> m_lastWord;
};
