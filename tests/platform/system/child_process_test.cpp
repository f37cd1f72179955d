// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/child_process.h"

#include "system/file_descriptor.h"
#include "tests/support/files.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sstream>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace lumora {
namespace {

using test::TemporaryDirectory;

Result<ProcessOutcome> runScript(std::string script, std::vector<std::string> arguments = {},
                                 std::stop_token kill = {})
{
    std::vector<std::string> all{"-c", std::move(script), "script"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return runProcess("/bin/sh", all, std::move(kill));
}

TEST(RunProcess, ReportsExitStatusAndStandardError)
{
    const auto outcome = runScript("echo oops >&2; exit 3");
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome->exitStatus, 3);
    EXPECT_EQ(outcome->standardError, "oops\n");
}

TEST(RunProcess, HandsArgumentsOverUnchanged)
{
    const auto outcome = runScript("printf '<%s>' \"$@\" >&2", {"a b", "", "$(echo no)", "-x", "\xFF\n'\""});
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome->exitStatus, 0);
    EXPECT_EQ(outcome->standardError, "<a b><><$(echo no)><-x><\xFF\n'\">");
}

TEST(RunProcess, IsNotStalledByALotOfStandardError)
{
    const auto outcome = runScript("head -c 1000000 /dev/zero | tr '\\0' e >&2; exit 1");
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome->exitStatus, 1);
    EXPECT_EQ(outcome->standardError, std::string(1'000'000, 'e'));
}

TEST(RunProcess, KeepsABoundedPartOfEndlessStandardError)
{
    const auto outcome = runScript("head -c 20000000 /dev/zero >&2");
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome->exitStatus, 0);
    EXPECT_EQ(outcome->standardError.size(), std::size_t{16} << 20U);
}

TEST(RunProcess, WaitsForAProcessThatClosesItsStandardError)
{
    const TemporaryDirectory folder;
    const auto outcome = runScript("exec 2>&-; : > \"$1\"; exit 4", {(folder / "done").native()});
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome->exitStatus, 4);
    EXPECT_TRUE(std::filesystem::exists(folder / "done"));
}

TEST(RunProcess, DoesNotWaitForGrandchildrenThatHoldStandardError)
{
    const TemporaryDirectory folder;
    ASSERT_EQ(mkfifo((folder / "release").c_str(), 0600), 0);
    const auto outcome =
        runScript("echo early >&2; cat \"$1\" >&2 & exit 0", {(folder / "release").native()});
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome->standardError, "early\n");
    const std::ofstream release(folder / "release"); // lets the grandchild go
}

TEST(RunProcess, ReportsASignalAsAShellDoes)
{
    const auto outcome = runScript("kill -TERM $$");
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome->exitStatus, 128 + SIGTERM);
}

TEST(RunProcess, LeadsAProcessGroupOfItsOwn)
{
    const auto outcome = runScript("echo $$ $(ps -o pgid= -p $$) >&2");
    ASSERT_TRUE(outcome);
    std::istringstream words(outcome->standardError);
    pid_t process = 0;
    pid_t group = 0;
    words >> process >> group;
    EXPECT_GT(process, 0);
    EXPECT_EQ(process, group);
}

TEST(RunProcess, StartsWithDefaultSignals)
{
    sigset_t blocked;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &blocked, nullptr);
    const auto before = std::signal(SIGPIPE, SIG_IGN);
    const auto outcome =
        runScript("sed -n 's/^Sig\\(Blk\\|Ign\\):/0x/p' /proc/self/status | tr -d '\\t' >&2");
    std::signal(SIGPIPE, before);
    pthread_sigmask(SIG_UNBLOCK, &blocked, nullptr);
    ASSERT_TRUE(outcome);
    std::istringstream masks(outcome->standardError);
    std::uint64_t blockedThere = 1;
    std::uint64_t ignoredThere = 1;
    masks >> std::hex >> blockedThere >> ignoredThere;
    EXPECT_EQ(blockedThere, 0U) << outcome->standardError;
    EXPECT_EQ(ignoredThere & (std::uint64_t{1} << (SIGPIPE - 1)), 0U) << outcome->standardError;
}

TEST(RunProcess, HandsNoOtherDescriptorDown)
{
    const TemporaryDirectory folder;
    const int leaked = ::open((folder / "leaked").c_str(), O_CREAT | O_RDWR, 0600); // without close-on-exec
    ASSERT_GE(leaked, 3);
    const auto outcome = runScript("ls -l /proc/$$/fd >&2");
    ::close(leaked);
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome->standardError.find("leaked"), std::string::npos) << outcome->standardError;
}

// The pipe ends when the last process of the group is gone; one that was spared would speak up first.
TEST(RunProcess, KillsTheWholeGroupOnAStop)
{
    const TemporaryDirectory folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    std::stop_source kill;
    std::string ready;
    std::string spared;
    std::jthread reader([&] {
        std::ifstream pipe(folder / "pipe");
        std::getline(pipe, ready);
        kill.request_stop();
        std::getline(pipe, spared);
    });
    const auto outcome = runScript("(echo ready; sleep 20; echo spared) > \"$1\" & wait",
                                   {(folder / "pipe").native()}, kill.get_token());
    reader.join();
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome->exitStatus, 128 + SIGKILL);
    EXPECT_EQ(ready, "ready");
    EXPECT_EQ(spared, "");
}

TEST(RunProcess, DoesNotOutliveAKilledParent)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
    const FileDescriptor ours(ends[0]);
    FileDescriptor theirs(ends[1]);
    const pid_t parent = fork();
    ASSERT_GE(parent, 0);
    if (parent == 0) {
        ::dup2(theirs.get(), STDOUT_FILENO);
        static_cast<void>(runScript("echo started; exec sleep 600"));
        _exit(1);
    }
    static_cast<void>(theirs.close());
    std::array<char, 8> word{};
    ASSERT_EQ(::read(ours.get(), word.data(), word.size()), 8) << "the program did not start";
    ::kill(parent, SIGKILL);
    EXPECT_EQ(::waitpid(parent, nullptr, 0), parent);
    // Standard output, which the program inherited, closes when it ends.
    pollfd end{ours.get(), POLLIN, 0};
    EXPECT_EQ(::poll(&end, 1, 20'000), 1) << "the program goes on";
    EXPECT_EQ(::read(ours.get(), word.data(), word.size()), 0);
}

TEST(RunProcess, IsKilledAtOnceWhenTheStopCameFirst)
{
    std::stop_source kill;
    kill.request_stop();
    const auto outcome = runScript("sleep 1000", {}, kill.get_token());
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome->exitStatus, 128 + SIGKILL);
}

TEST(RunProcess, TakesALateStopWithoutHarm)
{
    std::stop_source kill;
    const auto outcome = runScript("exit 0", {}, kill.get_token());
    kill.request_stop();
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome->exitStatus, 0);
}

// The system throws the exit status away then; a failure must not pass for a success.
TEST(RunProcess, TakesNoUnknownEndForASuccess)
{
    const auto before = std::signal(SIGCHLD, SIG_IGN);
    const auto outcome = runScript("exit 3");
    std::signal(SIGCHLD, before);
    EXPECT_FALSE(outcome);
}

TEST(RunProcess, FailsWithTheSystemsReasonWithoutFreeDescriptors)
{
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit none{3, before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
    const auto outcome = runScript("exit 0");
    setrlimit(RLIMIT_NOFILE, &before);
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().description, "Too many open files");
}

struct LaunchFailure
{
    const char* name;
    std::optional<std::string_view> content;
    std::filesystem::perms permissions;
    std::string_view reason;
};

void PrintTo(const LaunchFailure& c, std::ostream* out)
{
    *out << c.name;
}

class RunProcessLaunch : public testing::TestWithParam<LaunchFailure>
{
};

TEST_P(RunProcessLaunch, FailsWithTheSystemsReason)
{
    const TemporaryDirectory folder;
    if (GetParam().content) {
        test::writeFile(folder / "tool", *GetParam().content);
        std::filesystem::permissions(folder / "tool", GetParam().permissions);
    }
    const auto outcome = runProcess(folder / "tool", {});
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().description, GetParam().reason);
}

INSTANTIATE_TEST_SUITE_P(
    , RunProcessLaunch,
    testing::Values(LaunchFailure{"Missing", std::nullopt, {}, "No such file or directory"},
                    LaunchFailure{"NotExecutable", "x", std::filesystem::perms::owner_read,
                                  "Permission denied"},
                    LaunchFailure{"NotAProgram", "x", std::filesystem::perms::owner_all, "Exec format error"},
                    LaunchFailure{"MissingInterpreter", "#!/no/such/interpreter\n",
                                  std::filesystem::perms::owner_all, "No such file or directory"}),
    [](const auto& test) { return test.param.name; });

} // namespace
} // namespace lumora
