// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The steps of a benchmark, which are timed, or whose instructions callgrind counts.
#pragma once

#include <QByteArray>

#include <benchmark/benchmark.h>
#include <cstddef>
#include <valgrind/callgrind.h>

/// Under callgrind, counts the instructions of its lifetime as one step; see below.
class Counting
{
  public:
    Counting()
    {
        CALLGRIND_START_INSTRUMENTATION;
        CALLGRIND_ZERO_STATS;
    }
    ~Counting()
    {
        CALLGRIND_DUMP_STATS_AT("steps 1");
        CALLGRIND_STOP_INSTRUMENTATION;
    }
    Counting(const Counting &) = delete;
    Counting &operator=(const Counting &) = delete;
};

/// For a range-based loop in place of that over the benchmark's state. Under callgrind, which is to be started with
/// --instr-atstart=no, the number of steps is fixed: the instructions of all but the first ones are dumped, with the
/// trigger "steps N".
class Steps
{
  public:
    struct [[maybe_unused]] Step
    {
    };

    struct Iterator
    {
        Steps *steps;

        bool operator!=(std::nullptr_t) const
        {
            return steps->HasNext();
        }
        void operator++() const {}
        Step operator*() const
        {
            return {};
        }
    };

    /// @param counted  steps that callgrind counts, after as many others
    explicit Steps(benchmark::State &state, int counted = 20) : m_state(state), m_counted(counted)
    {
        m_isCounting = RUNNING_ON_VALGRIND != 0; // a statement of its own, as the macro needs
    }

    Iterator begin()
    {
        return {this};
    }
    std::nullptr_t end() const
    {
        return nullptr;
    }

    /// What is done until Resume belongs to no step.
    void Pause()
    {
        if (!m_isCounting)
            m_state.PauseTiming();
        else if (m_begun > m_counted)
            CALLGRIND_TOGGLE_COLLECT;
    }
    void Resume()
    {
        if (!m_isCounting)
            m_state.ResumeTiming();
        else if (m_begun > m_counted)
            CALLGRIND_TOGGLE_COLLECT;
    }

  private:
    bool HasNext()
    {
        if (!m_isCounting)
            return m_state.KeepRunning();
        if (m_begun == m_counted) {
            CALLGRIND_START_INSTRUMENTATION;
            CALLGRIND_ZERO_STATS;
        }
        if (m_begun++ < 2 * m_counted)
            return true;
        CALLGRIND_DUMP_STATS_AT(QByteArray("steps " + QByteArray::number(m_counted)).constData());
        CALLGRIND_STOP_INSTRUMENTATION;
        while (m_state.KeepRunning())
            ; // the library expects it
        return false;
    }

    benchmark::State &m_state;
    int m_counted;
    int m_begun = 0;
    bool m_isCounting;
};
