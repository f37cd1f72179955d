// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/servant_process.h"

#include "process_launch.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace lumora {
namespace {

#ifdef LUMORA_SANITIZED
constexpr bool canLimitAddresses = false; // sanitizers set terabytes of them aside
#else
constexpr bool canLimitAddresses = true;
#endif

Error systemError(int code)
{
    return {std::generic_category().message(code)};
}

void setLimit(pid_t process, __rlimit_resource resource, std::int64_t most)
{
    rlimit limit{};
    if (::prlimit(process, resource, nullptr, &limit) != 0) return;
    limit.rlim_cur = std::min(static_cast<rlim_t>(most), limit.rlim_max);
    ::prlimit(process, resource, &limit, nullptr);
}

} // namespace

Result<ServantProcess> ServantProcess::start(const std::filesystem::path& executable,
                                             std::vector<std::string> arguments)
{
    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) return systemError(errno);
    FileDescriptor ours(ends[0]);
    const FileDescriptor theirs(ends[1]);
    const FileDescriptor nothing(::open("/dev/null", O_RDWR | O_CLOEXEC));
    if (!nothing.isOpen()) return systemError(errno);
    const pid_t process = launchProgram(
        executable, std::move(arguments),
        {.input = nothing.get(), .output = nothing.get(), .error = nothing.get(), .channel = theirs.get()},
        Environment::empty);
    if (process < 0) return systemError(-process);
    return ServantProcess(process, std::move(ours));
}

ServantProcess::ServantProcess(pid_t process, FileDescriptor channel)
    : m_process(process), m_channel(std::move(channel))
{
}

ServantProcess::ServantProcess(ServantProcess&& other) noexcept
    : m_process(std::exchange(other.m_process, 0)), m_channel(std::move(other.m_channel))
{
}

ServantProcess::~ServantProcess()
{
    if (m_process != 0) end();
}

void ServantProcess::kill() const
{
    if (m_process != 0) ::kill(m_process, SIGKILL);
}

int ServantProcess::end()
{
    kill();
    int status = 0;
    while (::waitpid(m_process, &status, 0) < 0 && errno == EINTR) {
    }
    m_process = 0;
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

std::optional<ProcessUsage> ServantProcess::usage() const
{
    std::ifstream statm("/proc/" + std::to_string(m_process) + "/statm");
    std::int64_t virtualPages = 0;
    std::int64_t residentPages = 0;
    clockid_t clock{};
    timespec time{};
    if (!(statm >> virtualPages >> residentPages) || ::clock_getcpuclockid(m_process, &clock) != 0 ||
        ::clock_gettime(clock, &time) != 0)
        return std::nullopt;
    const std::int64_t pageBytes = ::sysconf(_SC_PAGESIZE);
    constexpr long nanosecondsAMillisecond = 1'000'000;
    return ProcessUsage{std::chrono::seconds(time.tv_sec) +
                            std::chrono::milliseconds(time.tv_nsec / nanosecondsAMillisecond),
                        residentPages * pageBytes, virtualPages * pageBytes};
}

void ServantProcess::limitMemory(std::int64_t virtualBytes) const
{
    if (canLimitAddresses) setLimit(m_process, RLIMIT_AS, virtualBytes);
}

void ServantProcess::limitProcessorTime(std::chrono::seconds most) const
{
    setLimit(m_process, RLIMIT_CPU, most.count());
}

} // namespace lumora
