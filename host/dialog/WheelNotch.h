#pragma once

#include <cstdlib>

/// Turns of a wheel as steps: each message of a full notch or more is one, and so are as many parts of a notch as make
/// one up, which touch pads and fine wheels report.
class CWheelNotch
{
public:
    static constexpr int Notch = 120; ///< eighths of a degree

    /// Takes a turn, positive away from the user; returns the step that it completes: 1, -1, or 0 for none.
    [[nodiscard]] int Take(int turned)
    {
        if ((turned < 0) != (m_rest < 0))
            m_rest = 0;
        m_rest += turned;
        if (std::abs(m_rest) < Notch)
            return 0;
        m_rest = std::abs(turned) < Notch ? m_rest % Notch : 0;
        return turned < 0 ? -1 : 1;
    }

private:
    int m_rest = 0; ///< part of a notch not yet taken
};
