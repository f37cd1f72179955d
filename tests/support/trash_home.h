// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A data folder of the test program's own, and with it a Trash. The desktop's library looks for it once a
// process: one for all tests of a program.
#pragma once

#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>

namespace lumora::test {

class TrashHome : public testing::Environment
{
public:
    void SetUp() override
    {
        m_home.emplace();
        setenv("XDG_DATA_HOME", m_home->path().c_str(), 1);
    }
    void TearDown() override { m_home.reset(); }

private:
    std::optional<TemporaryDirectory> m_home;
};

} // namespace lumora::test
