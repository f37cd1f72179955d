// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Ctrl+C in the middle of a batch. The encoder says through one pipe that it runs and waits on another to go
// on, so that nothing here depends on time.
#include "tests/cli/cli_fixture.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

namespace lumora::cli::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class CliInterrupt : public CliTest
{
protected:
    CliInterrupt() : m_running(folder("pipes") / "running"), m_goOn(folder("pipes") / "go-on")
    {
        mkfifo(m_running.c_str(), 0600);
        mkfifo(m_goOn.c_str(), 0600);
        useEncoder("echo > '" + m_running.string() + "'; cat '" + m_goOn.string() +
                   "'; exec " LUMORA_CWEBP " \"$@\"");
        for (const char* name : {"a.jpg", "b.jpg", "c.jpg"})
            photograph(name);
    }

    std::unique_ptr<CliProcess> startAndReachTheEncoder()
    {
        auto process = start({"-o", out(""), "--json", "--jobs", "1", "a.jpg", "b.jpg", "c.jpg"});
        waitForWriter(m_running);
        return process;
    }

    void letTheEncoderGoOn() const { close(open(m_goOn.c_str(), O_WRONLY)); }

private:
    static void waitForWriter(const fs::path& pipe)
    {
        const int end = open(pipe.c_str(), O_RDONLY);
        char word = 0;
        EXPECT_EQ(read(end, &word, 1), 1); // the writer must be through before its reader leaves
        close(end);
    }

    const fs::path m_running;
    const fs::path m_goOn;
};

TEST_F(CliInterrupt, finishesTheFileInWorkAndStartsNoOther)
{
    const auto process = startAndReachTheEncoder();
    process->send(SIGINT);
    process->waitForComplaint("interrupted");
    letTheEncoderGoOn();
    const Outcome outcome = finish(*process);
    EXPECT_EQ(outcome.status, 130);
    ASSERT_THAT(outcome.objects(), SizeIs(1));
    EXPECT_EQ(outcome.objects()[0].at("success"), true);
    EXPECT_THAT(outputs(), ElementsAre("a.webp"));
}

TEST_F(CliInterrupt, aSecondTimeEndsTheEncoder)
{
    const auto process = startAndReachTheEncoder();
    process->send(SIGINT);
    process->waitForComplaint("interrupted");
    process->send(SIGINT);
    const Outcome outcome = finish(*process);
    EXPECT_EQ(outcome.status, 130);
    ASSERT_THAT(outcome.objects(), SizeIs(1));
    EXPECT_EQ(outcome.objects()[0].at("success"), false);
    EXPECT_THAT(outputs(), IsEmpty());
}

TEST_F(CliInterrupt, beingToldToTerminateEndsTheEncoderAtOnce)
{
    const auto process = startAndReachTheEncoder();
    process->send(SIGTERM);
    EXPECT_EQ(finish(*process).status, 128 + SIGTERM);
    EXPECT_THAT(outputs(), IsEmpty());
}

} // namespace
} // namespace lumora::cli::test
