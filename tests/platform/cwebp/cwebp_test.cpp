// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cwebp/cwebp.h"

#include "tests/support/fake_encoder.h"

namespace lumora {
namespace {

class Cwebp : public test::EncoderTest
{
};

TEST_F(Cwebp, IsTheOverrideAndFallsBackToTheBundleWhenThatCannotRun)
{
    installBundled("exit 0");
    unsetenv("LUMORA_CWEBP_PATH");
    EXPECT_EQ(findCwebp(m_bundle), bundled());

    const auto preferred = script("preferred", "exit 0");
    setOverride(preferred);
    EXPECT_EQ(findCwebp(m_bundle), preferred);

    setOverride(m_folder / "missing");
    EXPECT_EQ(findCwebp(m_bundle), bundled());
    test::writeText(m_folder / "plain", "not executable");
    setOverride(m_folder / "plain");
    EXPECT_EQ(findCwebp(m_bundle), bundled());
    setOverride(m_folder.path());
    EXPECT_EQ(findCwebp(m_bundle), bundled());
}

TEST_F(Cwebp, IsNobodyInABundleWithoutAnEncoder)
{
    unsetenv("LUMORA_CWEBP_PATH");
    EXPECT_EQ(findCwebp(m_bundle), std::nullopt);
}

} // namespace
} // namespace lumora
