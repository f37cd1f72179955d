// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What the external encoder may do to a run.
#include "tests/cli/cli_fixture.h"

namespace lumora::cli::test {
namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;
using testing::SizeIs;

class CliEncoder : public CliTest
{
protected:
    std::string messageOfFailure()
    {
        photograph("a.jpg");
        const Outcome outcome = runInto({"--json", "a.jpg"});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_THAT(outputs(), IsEmpty());
        const auto objects = outcome.objects();
        return objects.size() == 1 ? objects[0].at("message").get<std::string>() : outcome.results;
    }
};

TEST_F(CliEncoder, missing)
{
    useCopyOfProgram();
    EXPECT_EQ(messageOfFailure(),
              "WebP support is not bundled in this build. is not supported by this macOS ImageIO "
              "installation.");
}

TEST_F(CliEncoder, anOverrideThatIsNoProgramIsPassedOver)
{
    photograph("a.jpg");
    m_launch.environment["LUMORA_CWEBP_PATH"] = "/nowhere/cwebp";
    EXPECT_EQ(runInto({"a.jpg"}).status, 0);
}

TEST_F(CliEncoder, failing)
{
    useEncoder("echo ' no luck today ' >&2; exit 3");
    EXPECT_EQ(messageOfFailure(), "Could not finish writing a.webp: no luck today");
}

TEST_F(CliEncoder, failingWithoutAWord)
{
    useEncoder("echo >&2; exit 3");
    EXPECT_EQ(messageOfFailure(), "Could not finish writing a.webp: cwebp exited with status 3");
}

TEST_F(CliEncoder, isWaitedForUnderAParentThatIgnoresItsChildren)
{
    const fs::path parent = folder("parent") / "parent";
    writeFile(parent, "#!/bin/bash\ntrap '' CHLD\nexec '" + m_launch.program.native() + "' \"$@\"\n");
    fs::permissions(parent, fs::perms::owner_all);
    m_launch.program = parent;
    photograph("a.jpg");
    EXPECT_EQ(runInto({"a.jpg"}).status, 0);
}

TEST_F(CliEncoder, writingNothing)
{
    useEncoder("exit 0");
    EXPECT_EQ(messageOfFailure(), "Could not finish writing a.webp: cwebp did not create an output file");
}

TEST_F(CliEncoder, talkingWithoutEndStillGivesOneShortRow)
{
    photograph("a.jpg");
    useEncoder("head -c 1000000 /dev/zero | tr '\\0' 'x' >&2; echo >&2; echo more >&2; exit 1");
    const Outcome outcome = runInto({"a.jpg"});
    EXPECT_EQ(outcome.status, 1);
    ASSERT_THAT(outcome.lines(), SizeIs(2));
    EXPECT_LT(outcome.lines()[0].size(), 400u);
    const auto whole = runInto({"--json", "a.jpg"}).objects();
    ASSERT_THAT(whole, SizeIs(1));
    EXPECT_GT(whole[0].at("message").get<std::string>().size(), 1'000'000u);
}

} // namespace
} // namespace lumora::cli::test
