#include "platform/modVoice.h"

#include <windows.h>
// windows.h stands first: sapi.h needs its types.
#include <sapi.h>

// The system's speech interface (SAPI 5). Each instance of ISpVoice speaks the texts that it is given one after
// another.
struct Voice::Engine
{
    // S_FALSE, already initialized by the toolkit, counts as a success and has to be balanced all the same.
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
    // A system without any voice has the interface all the same.
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
