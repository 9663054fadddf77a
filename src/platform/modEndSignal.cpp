// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modEndSignal.h"

#include <utility>

namespace {

// Global, because a destructor takes no argument.
EndSignal *g_living = nullptr;

} // namespace

EndSignal::EndSignal()
{
    g_living = this;
    // Not std::atexit: on Linux that is a function of its own at the very end of the program, the only one of those
    // pages that the start needs.
    struct ExitHandler
    {
        ~ExitHandler()
        {
            RunExitHook();
        }
    };
    static const ExitHandler atExit;
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
