// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modVoice.h"

#include "platform/modProcess.h"

#include <QProcess>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Language of the voice: Japanese for a text with kana or kanji, else English.
QString LanguageOf(const QString &text)
{
    const bool isJapanese = std::any_of(text.begin(), text.end(), [](QChar character) {
        const QChar::Script script = character.script();
        return script == QChar::Script_Han || script == QChar::Script_Hiragana || script == QChar::Script_Katakana;
    });
    return isJapanese ? u"ja"_s : u"en"_s;
}

/// An installed program that speaks, the speech service first; empty if there is none.
QString FindSpeaker()
{
    return FirstInstalled({u"spd-say"_s, u"espeak-ng"_s});
}

/// Each text is spoken by a process of its own. That of spd-say ends as soon as the speech service has the text; the
/// service then ends the text before by itself.
class Speakers
{
  public:
    Speakers() = default;
    Q_DISABLE_COPY_MOVE(Speakers)

    ~Speakers()
    {
        EndAll();
        for (QProcess *const speaker : m_processes.findChildren<QProcess *>())
            speaker->waitForFinished(); // or QProcess warns that it is destroyed too early
    }

    void EndAll()
    {
        for (QProcess *const speaker : m_processes.findChildren<QProcess *>())
            speaker->kill();
    }

    void Start(const QString &program, const QStringList &arguments)
    {
        auto *const speaker = new QProcess(&m_processes);
        speaker->setStandardInputFile(QProcess::nullDevice());
        speaker->setProcessChannelMode(QProcess::ForwardedChannels);
        QObject::connect(speaker, &QProcess::stateChanged, speaker, [speaker](QProcess::ProcessState state) {
            if (state == QProcess::NotRunning)
                speaker->deleteLater();
        });
        speaker->start(program, arguments);
    }

  private:
    QObject m_processes; // parent of those that have not ended
};

} // namespace

bool Voice::IsThere()
{
    return !FindSpeaker().isEmpty();
}

void Voice::Speak(const QString &text)
{
    const QString speaker = FindSpeaker();
    if (speaker.isEmpty())
        return;
    if (!m_engine)
        m_engine = std::make_shared<Speakers>();
    Speakers *const speakers = static_cast<Speakers *>(m_engine.get());
    const QString languageOption = speaker.endsWith(u"spd-say") ? u"-l"_s : u"-v"_s;
    speakers->EndAll();
    speakers->Start(speaker, {languageOption, LanguageOf(text), u"--"_s, text});
}

QString VoiceAdvice()
{
    return u"パッケージ espeak-ng をインストールしてください。"_s;
}
