// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#pragma once

/// Converts turns of a mouse wheel into whole steps. A touchpad sends small fractions of a notch, which add up.
class WheelSteps
{
  public:
    /// @param angle  of the turn, in eighths of a degree; @param stepsPerNotch  the same in every call
    /// @return number of steps completed by the turn, with the sign of the angle
    int Take(int angle, int stepsPerNotch)
    {
        constexpr int notch = 120;
        m_rest += angle * stepsPerNotch;
        const int steps = m_rest / notch;
        m_rest -= steps * notch;
        return steps;
    }

  private:
    int m_rest = 0;
};
