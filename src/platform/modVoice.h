// Reads text aloud.
#pragma once

#include <QString>

#include <memory>

class Voice
{
  public:
    Voice();
    ~Voice();
    Q_DISABLE_COPY_MOVE(Voice)

    /// Speaks a text and returns at once. The text is only spoken: it is no markup, no option and no part of a script
    /// or command line, whatever characters it holds. Where there is no voice it stays silent. Nothing is loaded before
    /// the first text.
    void Speak(const QString &text);

    /// Whether there is a voice.
    bool IsThere();

  private:
    struct Engine;
    std::unique_ptr<Engine> m_engine;
};
