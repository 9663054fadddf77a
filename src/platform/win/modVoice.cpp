// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modVoice.h"

#include <windows.h>
// After windows.h, whose types it needs.
#include <sapi.h>

namespace {

// The system's speech interface (SAPI 5). An ISpVoice queues its texts unless it is told to purge the queue.
struct Engine
{
    // S_FALSE (already initialized, by Qt) counts as success and must be balanced too.
    const HRESULT initialized = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    ISpVoice *voice = nullptr;

    Engine()
    {
        if (FAILED(CoCreateInstance(__uuidof(SpVoice), nullptr, CLSCTX_ALL, __uuidof(ISpVoice),
                                    reinterpret_cast<void **>(&voice))))
            voice = nullptr;
    }

    ~Engine()
    {
        if (voice)
            voice->Release();
        if (SUCCEEDED(initialized))
            CoUninitialize();
    }

    Q_DISABLE_COPY_MOVE(Engine)
};

/// The voice of the engine, which is loaded by the first call; null without one.
ISpVoice *VoiceOf(std::shared_ptr<void> *engine)
{
    if (!*engine)
        *engine = std::make_shared<Engine>();
    return static_cast<Engine *>(engine->get())->voice;
}

} // namespace

bool Voice::IsThere()
{
    // The interface exists even on a system without any voice.
    ISpVoice *const voice = VoiceOf(&m_engine);
    ISpObjectToken *token = nullptr;
    if (!voice || FAILED(voice->GetVoice(&token)))
        return false;
    token->Release();
    return true;
}

void Voice::Speak(const QString &text)
{
    if (ISpVoice *const voice = VoiceOf(&m_engine))
        voice->Speak(reinterpret_cast<LPCWSTR>(text.utf16()), SPF_ASYNC | SPF_IS_NOT_XML | SPF_PURGEBEFORESPEAK,
                     nullptr);
}

QString VoiceAdvice()
{
    return QStringLiteral("Windows の「設定」の「時刻と言語」で，日本語の「テキスト読み上げ」を追加してください。");
}
