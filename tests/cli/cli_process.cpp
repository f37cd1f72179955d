// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/cli/cli_process.h"

#include <fcntl.h>
#include <grp.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <stdexcept>

namespace lumora::cli::test {

namespace {

constexpr unsigned nobody = 65534;
constexpr unsigned patience = 200; // seconds

std::vector<std::string> assignments(const std::map<std::string, std::string>& environment)
{
    std::vector<std::string> result;
    for (const auto& [name, value] : environment)
        result.push_back(name + "=" + value);
    return result;
}

std::vector<char*> pointers(std::vector<std::string>& strings)
{
    std::vector<char*> result;
    for (std::string& text : strings)
        result.push_back(text.data());
    result.push_back(nullptr);
    return result;
}

void require(bool succeeded)
{
    if (!succeeded) _exit(126);
}

void connectStreams(const Launch& launch, int complaints)
{
    const int input = launch.terminal >= 0 ? launch.terminal : open("/dev/null", O_RDONLY);
    const int results = open(launch.results.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    require(dup2(input, 0) == 0 && dup2(results, 1) == 1 && dup2(complaints, 2) == 2);
}

// In the child, between fork and exec.
void become(const Launch& launch, int complaints)
{
    connectStreams(launch, complaints);
    require(chdir(launch.workingDirectory.c_str()) == 0);
    if (launch.largestFile) {
        const rlimit limit{*launch.largestFile, *launch.largestFile};
        require(setrlimit(RLIMIT_FSIZE, &limit) == 0);
        std::signal(SIGXFSZ, SIG_IGN);
    }
    if (launch.asNobody && geteuid() == 0)
        require(setgroups(0, nullptr) == 0 && setgid(nobody) == 0 && setuid(nobody) == 0);
    alarm(patience);
}

} // namespace

CliProcess::CliProcess(const Launch& launch)
{
    std::vector<std::string> arguments = launch.arguments;
    arguments.insert(arguments.begin(), "lumora-cli");
    std::vector<std::string> environment = assignments(launch.environment);
    const auto argv = pointers(arguments);
    const auto envp = pointers(environment);
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("cannot make a pipe");
    m_complaintsEnd = ends[0];
    m_pid = fork();
    if (m_pid == 0) {
        become(launch, launch.terminal >= 0 ? launch.terminal : ends[1]);
        execve(launch.program.c_str(), argv.data(), envp.data());
        _exit(127);
    }
    close(ends[1]);
}

CliProcess::~CliProcess()
{
    if (m_pid > 0) {
        kill(m_pid, SIGKILL);
        waitpid(m_pid, nullptr, 0);
    }
    close(m_complaintsEnd);
}

void CliProcess::send(int signalNumber) const
{
    kill(m_pid, signalNumber);
}

bool CliProcess::readComplaints()
{
    std::array<char, 4096> buffer;
    const ssize_t count = read(m_complaintsEnd, buffer.data(), buffer.size());
    if (count > 0) m_complaints.append(buffer.data(), static_cast<std::size_t>(count));
    return count > 0;
}

void CliProcess::waitForComplaint(const std::string& text)
{
    while (m_complaints.find(text) == std::string::npos)
        if (!readComplaints()) throw std::runtime_error("never said: " + text);
}

int CliProcess::wait()
{
    while (readComplaints()) {
    }
    int status = 0;
    waitpid(m_pid, &status, 0);
    m_pid = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
}

} // namespace lumora::cli::test
