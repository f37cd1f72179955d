// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Values in no order, the same in every run.
#pragma once

namespace lumora::test {

class Noise
{
public:
    // 0 to 65535.
    unsigned next()
    {
        m_state = m_state * 1103515245U + 12345U;
        return m_state >> 16U;
    }

private:
    unsigned m_state = 1;
};

} // namespace lumora::test
