// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modEndSignal.h"

#include <cstdlib>
#include <utility>

namespace {

// Global, because an atexit handler takes no argument.
EndSignal *g_living = nullptr;

} // namespace

EndSignal::EndSignal()
{
    g_living = this;
    std::atexit(SayLastWord);
    TakeRequests();
}

EndSignal::~EndSignal()
{
    RefuseRequests();
    g_living = nullptr;
}

void EndSignal::SetLastWord(const std::function<void()> &lastWord)
{
    m_lastWord = lastWord;
}

void EndSignal::SayLastWord()
{
    if (g_living && g_living->m_lastWord)
        std::exchange(g_living->m_lastWord, nullptr)();
}
