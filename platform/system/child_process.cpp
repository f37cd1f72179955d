// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/child_process.h"

#include "process_launch.h"
#include "system/file_descriptor.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

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

Result<pid_t> launch(const std::filesystem::path& executable, std::vector<std::string> arguments,
                     int standardError)
{
    const pid_t process =
        launchProgram(executable, std::move(arguments), {.error = standardError}, Environment::inherited);
    if (process < 0) return systemError(-process);
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
