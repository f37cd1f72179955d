// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What only a user at a terminal sees: progress and the question before replacing.
#include "tests/cli/cli_fixture.h"

#include <pty.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace lumora::cli::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

class CliTerminal : public CliTest
{
protected:
    CliTerminal()
    {
        if (openpty(&m_user, &m_launch.terminal, nullptr, nullptr, nullptr) != 0)
            throw std::runtime_error("no pseudo-terminal");
        photograph("a.jpg");
    }
    ~CliTerminal() override
    {
        close(m_user);
        if (m_launch.terminal >= 0) close(m_launch.terminal);
    }

    std::unique_ptr<CliProcess> startHere(const std::vector<std::string>& arguments)
    {
        auto process = start(arguments);
        // The program's copy is the only one now: its end is the end of what the user reads.
        close(std::exchange(m_launch.terminal, -1));
        return process;
    }

    // What appears on the terminal up to and with the text, or up to the program's end.
    std::string screenUntil(const std::string& text)
    {
        std::string screen;
        std::array<char, 1024> buffer;
        while (text.empty() || screen.find(text) == std::string::npos) {
            const ssize_t count = read(m_user, buffer.data(), buffer.size());
            if (count <= 0) break;
            screen.append(buffer.data(), static_cast<std::size_t>(count));
        }
        return screen;
    }

    void type(const std::string& text) const
    {
        ASSERT_EQ(write(m_user, text.data(), text.size()), ssize_t(text.size()));
    }

    // The status after the question was answered so.
    int statusAfterAnswer(const std::string& answer)
    {
        writeFile(out("a.webp"), "old");
        const auto process = startHere({"-o", out(""), "--existing", "ask", "a.jpg"});
        EXPECT_THAT(screenUntil("[Replace/skip]"),
                    HasSubstr("Replace a.webp? A file with this name already exists."));
        type(answer);
        screenUntil("");
        return finish(*process).status;
    }

    int m_user = -1;
};

TEST_F(CliTerminal, showsProgressAndErasesItInTheEnd)
{
    const auto process = startHere({"-o", out(""), "a.jpg"});
    const std::string screen = screenUntil("");
    EXPECT_THAT(screen, HasSubstr("Optimizing 1 image with 1 worker..."));
    EXPECT_THAT(screen, EndsWith("\r\x1b[K"));
    EXPECT_EQ(finish(*process).status, 0);
}

TEST_F(CliTerminal, showsNoProgressWhenQuiet)
{
    const auto process = startHere({"-o", out(""), "--quiet", "a.jpg"});
    EXPECT_EQ(screenUntil(""), "");
    EXPECT_EQ(finish(*process).status, 0);
}

TEST_F(CliTerminal, returnAloneReplaces)
{
    EXPECT_EQ(statusAfterAnswer("\n"), 0);
    EXPECT_NE(readFile(out("a.webp")), "old");
}

TEST_F(CliTerminal, anyOtherAnswerSkips)
{
    EXPECT_EQ(statusAfterAnswer("what?\n"), 1);
    EXPECT_EQ(readFile(out("a.webp")), "old");
}

TEST_F(CliTerminal, theEndOfInputSkips)
{
    EXPECT_EQ(statusAfterAnswer("\x04"), 1);
    EXPECT_EQ(readFile(out("a.webp")), "old");
}

TEST_F(CliTerminal, aDryRunSaysThatItWouldAskAndAsksNothing)
{
    writeFile(out("a.webp"), "old");
    const auto process = startHere({"-o", out(""), "--dry-run", "--existing", "ask", "a.jpg"});
    EXPECT_EQ(screenUntil(""), "");
    const Outcome outcome = finish(*process);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.results, EndsWith(": Would be asked about\n"));
    EXPECT_EQ(readFile(out("a.webp")), "old");
}

TEST_F(CliTerminal, anInterruptAnswersTheQuestionWithSkip)
{
    writeFile(out("a.webp"), "old");
    const auto process = startHere({"-o", out(""), "--existing", "ask", "a.jpg"});
    screenUntil("[Replace/skip]");
    process->send(SIGINT);
    screenUntil("");
    EXPECT_EQ(finish(*process).status, 130);
    EXPECT_EQ(readFile(out("a.webp")), "old");
}

} // namespace
} // namespace lumora::cli::test
