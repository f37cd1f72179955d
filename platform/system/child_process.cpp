// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// posix_spawn rather than fork: it does not copy the page tables of a process that holds pictures.
#include "system/child_process.h"

#include "system/file_descriptor.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <initializer_list>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <system_error>

namespace lumora {
namespace {

constexpr std::size_t maximumStandardError = std::size_t{16} << 20U;

Error systemError(int code)
{
    return {std::generic_category().message(code)};
}

struct Pipe
{
    FileDescriptor readEnd;
    FileDescriptor writeEnd;
};

Result<Pipe> makePipe()
{
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) return systemError(errno);
    Pipe pipe{FileDescriptor(ends[0]), FileDescriptor(ends[1])};
    // Of the read end only: at the end of the process what remains is taken without waiting for more.
    if (::fcntl(ends[0], F_SETFL, O_NONBLOCK) != 0) return systemError(errno);
    return pipe;
}

// Of several steps' answers: 0 or the errno of the first that failed.
int firstFailure(std::initializer_list<int> answers)
{
    for (const int answer : answers) {
        if (answer != 0) return answer;
    }
    return 0;
}

// A group of its own and the signal state of a fresh process, whatever this program blocks or ignores.
class SpawnAttributes
{
public:
    SpawnAttributes() : m_creation(posix_spawnattr_init(&m_attributes))
    {
        if (m_creation != 0) return;
        sigset_t none;
        sigemptyset(&none);
        sigset_t all;
        sigfillset(&all);
        m_settings = firstFailure(
            {posix_spawnattr_setsigmask(&m_attributes, &none),
             posix_spawnattr_setsigdefault(&m_attributes, &all), posix_spawnattr_setpgroup(&m_attributes, 0),
             posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF |
                                                         POSIX_SPAWN_SETPGROUP)});
    }
    ~SpawnAttributes()
    {
        if (m_creation == 0) posix_spawnattr_destroy(&m_attributes);
    }
    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;

    // 0 or errno.
    int failure() const { return firstFailure({m_creation, m_settings}); }
    const posix_spawnattr_t* get() const { return &m_attributes; }

private:
    posix_spawnattr_t m_attributes{};
    int m_creation;
    int m_settings = 0;
};

// Standard error into the pipe, everything above it closed.
class SpawnActions
{
public:
    explicit SpawnActions(int standardError) : m_creation(posix_spawn_file_actions_init(&m_actions))
    {
        if (m_creation != 0) return;
        m_additions =
            firstFailure({posix_spawn_file_actions_adddup2(&m_actions, standardError, STDERR_FILENO),
                          posix_spawn_file_actions_addclosefrom_np(&m_actions, STDERR_FILENO + 1)});
    }
    ~SpawnActions()
    {
        if (m_creation == 0) posix_spawn_file_actions_destroy(&m_actions);
    }
    SpawnActions(const SpawnActions&) = delete;
    SpawnActions& operator=(const SpawnActions&) = delete;

    // 0 or errno.
    int failure() const { return firstFailure({m_creation, m_additions}); }
    const posix_spawn_file_actions_t* get() const { return &m_actions; }

private:
    posix_spawn_file_actions_t m_actions{};
    int m_creation;
    int m_additions = 0;
};

Result<pid_t> launch(const std::filesystem::path& executable, std::vector<std::string> arguments,
                     int standardError)
{
    arguments.insert(arguments.begin(), executable.native());
    std::vector<char*> pointers;
    pointers.reserve(arguments.size() + 1);
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);

    const SpawnActions actions(standardError);
    const SpawnAttributes attributes;
    pid_t process = 0;
    int failure = firstFailure({actions.failure(), attributes.failure()});
    if (failure == 0) {
        failure = ::posix_spawn(&process, executable.c_str(), actions.get(), attributes.get(),
                                pointers.data(), environ);
    }
    if (failure != 0) return systemError(failure);
    return process;
}

// Readable once the process has ended. By number: the C library's header for it lacks C linkage.
int openProcess(pid_t process)
{
    return static_cast<int>(::syscall(SYS_pidfd_open, process, 0));
}

// Takes what the pipe holds now. False once the other end is closed.
bool takeAvailable(int pipe, std::string& text)
{
    std::array<char, 65536> buffer;
    for (;;) {
        const ssize_t count = ::read(pipe, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return errno == EAGAIN;
        if (count == 0) return false;
        text.append(buffer.data(),
                    std::min(static_cast<std::size_t>(count), maximumStandardError - text.size()));
    }
}

// Until the process itself has ended: a grandchild that keeps standard error open is not waited for.
std::string readUntilExit(int exit, int standardError)
{
    std::string text;
    std::array<pollfd, 2> events{pollfd{exit, POLLIN, 0}, pollfd{standardError, POLLIN, 0}};
    while (events[0].revents == 0) {
        ::poll(events.data(), events.size(), -1);
        // A negative descriptor is passed over by poll.
        if (events[1].revents != 0 && !takeAvailable(standardError, text)) events[1].fd = -1;
    }
    if (events[1].fd >= 0) takeAvailable(standardError, text);
    return text;
}

// The exit status as runProcess() hands it out.
Result<int> reap(pid_t process)
{
    int status = 0;
    while (::waitpid(process, &status, 0) < 0) {
        if (errno != EINTR) return systemError(errno);
    }
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

} // namespace

Result<ProcessOutcome> runProcess(const std::filesystem::path& executable,
                                  const std::vector<std::string>& arguments, std::stop_token kill)
{
    Result<Pipe> pipe = makePipe();
    if (!pipe) return pipe.error();
    const Result<pid_t> process = launch(executable, arguments, pipe->writeEnd.get());
    if (!process) return process.error();
    pipe->writeEnd = FileDescriptor();

    const auto killGroup = [group = *process] { ::kill(-group, SIGKILL); };
    const FileDescriptor exit(openProcess(*process));
    if (!exit.isOpen()) {
        const int failure = errno;
        killGroup();
        static_cast<void>(reap(*process));
        return systemError(failure);
    }
    std::string standardError;
    {
        // Gone before the process is reaped, so that its number cannot belong to another process by then.
        const std::stop_callback stopped(std::move(kill), killGroup);
        standardError = readUntilExit(exit.get(), pipe->readEnd.get());
    }
    const Result<int> exitStatus = reap(*process);
    if (!exitStatus) return exitStatus.error();
    return ProcessOutcome{*exitStatus, std::move(standardError)};
}

} // namespace lumora
