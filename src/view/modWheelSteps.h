// Makes whole steps of the turns of a wheel. A touchpad turns it by small fractions of a notch, which add up.
#pragma once

class WheelSteps
{
  public:
    /// @param angle  of the turn, in eighths of a degree; @param stepsPerNotch  of a wheel, always the same
    /// @return the steps that it completes, with the angle's sign
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
