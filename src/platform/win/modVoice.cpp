// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modVoice.h"

#include <windows.h>
// After windows.h, whose types it needs.
#include <sapi.h>

// The system's speech interface (SAPI 5). An ISpVoice queues its texts and speaks them one after another.
struct Voice::Engine
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

Voice::Voice() = default;
Voice::~Voice() = default;

bool Voice::IsThere()
{
    if (!m_engine)
        m_engine = std::make_unique<Engine>();
    // The interface exists even on a system without any voice.
    ISpObjectToken *token = nullptr;
    if (!m_engine->voice || FAILED(m_engine->voice->GetVoice(&token)))
        return false;
    token->Release();
    return true;
}

void Voice::Speak(const QString &text)
{
    if (!m_engine)
        m_engine = std::make_unique<Engine>();
    if (m_engine->voice)
        m_engine->voice->Speak(reinterpret_cast<LPCWSTR>(text.utf16()), SPF_ASYNC | SPF_IS_NOT_XML, nullptr);
}
