// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "process_launch.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace lumora {
namespace {

// What the child needs, made before it exists: between its start and the program it may only call the system.
class Launch
{
public:
    Launch(const std::filesystem::path& executable, std::vector<std::string> arguments,
           const LaunchedStreams& streams, Environment environment)
        : m_executable(executable.c_str()), m_arguments(std::move(arguments)), m_streams(streams),
          m_environment(environment == Environment::empty ? &m_noVariables : environ)
    {
        m_arguments.insert(m_arguments.begin(), executable.native());
        for (std::string& argument : m_arguments)
            m_pointers.push_back(argument.data());
        m_pointers.push_back(nullptr);
    }
    Launch(const Launch&) = delete;
    Launch& operator=(const Launch&) = delete;

    pid_t start()
    {
        sigset_t all;
        sigfillset(&all);
        sigset_t before;
        // No handler of this program may run in the child, which shares its memory.
        pthread_sigmask(SIG_SETMASK, &all, &before);
        const pid_t parent = ::getpid();
        // NOLINTBEGIN(clang-analyzer-*): the child may change the memory that it shares, as is known here
        const pid_t process = ::vfork();
        const int failure = process < 0 ? errno : 0;
        if (process == 0) becomeTheProgram(parent);
        // NOLINTEND(clang-analyzer-*)
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
        if (failure != 0) return -failure;
        if (m_failure == 0) return process;
        while (::waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
        }
        return -m_failure;
    }

private:
    [[noreturn]] void becomeTheProgram(pid_t parent)
    {
        struct sigaction standard = {};
        standard.sa_handler = SIG_DFL;
        for (int number = 1; number < NSIG; ++number)
            ::sigaction(number, &standard, nullptr);
        ::setpgid(0, 0);
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() != parent) ::_exit(128 + SIGKILL);
        if (!takeStreams()) {
            m_failure = errno;
            ::_exit(127);
        }
        sigset_t none;
        sigemptyset(&none);
        ::sigprocmask(SIG_SETMASK, &none, nullptr);
        ::execve(m_executable, m_pointers.data(), m_environment);
        m_failure = errno;
        ::_exit(127);
    }

    bool takeStreams()
    {
        // The channel first moves out of the way of the numbers that are given out here.
        constexpr int beyond = LaunchedStreams::channelNumber + 1;
        const int channel = m_streams.channel ? ::fcntl(*m_streams.channel, F_DUPFD, beyond) : -1;
        if (m_streams.channel && channel < 0) return false;
        if (m_streams.input) ::dup2(*m_streams.input, STDIN_FILENO);
        if (m_streams.output) ::dup2(*m_streams.output, STDOUT_FILENO);
        if (m_streams.error) ::dup2(*m_streams.error, STDERR_FILENO);
        if (channel >= 0) ::dup2(channel, LaunchedStreams::channelNumber);
        const auto firstClosed =
            static_cast<unsigned>(LaunchedStreams::channelNumber + (channel >= 0 ? 1 : 0));
        ::close_range(firstClosed, ~0U, 0);
        return true;
    }

    const char* m_executable;
    std::vector<std::string> m_arguments;
    std::vector<char*> m_pointers;
    const LaunchedStreams& m_streams;
    char* m_noVariables = nullptr;
    char** m_environment;
    volatile int m_failure = 0; // written by the child
};

} // namespace

pid_t launchProgram(const std::filesystem::path& executable, std::vector<std::string> arguments,
                    const LaunchedStreams& streams, Environment environment)
{
    return Launch(executable, std::move(arguments), streams, environment).start();
}

} // namespace lumora
