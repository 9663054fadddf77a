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
    std::atexit(RunExitHook);
    m_handling = HandleSignals();
}

EndSignal::~EndSignal()
{
    g_living = nullptr;
}

void EndSignal::SetExitHook(const std::function<void()> &hook)
{
    m_exitHook = hook;
}

void EndSignal::RunExitHook()
{
    if (g_living && g_living->m_exitHook)
        std::exchange(g_living->m_exitHook, nullptr)();
}
