// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The real lumora-cli as a child process.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace lumora::cli::test {

struct Launch
{
    std::vector<std::string> arguments;
    std::map<std::string, std::string> environment; // all of it
    std::filesystem::path workingDirectory;
    std::filesystem::path program;
    std::filesystem::path results; // the file that standard output goes to
    int terminal = -1;             // standard input and error, when there is one; else /dev/null and a pipe
    bool asNobody = false;         // without root's right to everything, when root
    std::optional<unsigned long> largestFile; // bytes, as on a disk that is full
};

class CliProcess
{
public:
    explicit CliProcess(const Launch& launch);
    ~CliProcess();
    CliProcess(const CliProcess&) = delete;
    CliProcess& operator=(const CliProcess&) = delete;

    void send(int signalNumber) const;

    // Blocks until the complaints hold the text; throws when they end before.
    void waitForComplaint(const std::string& text);

    // Blocks until the program ends: its exit status, or 1000 and the number of the signal that ended it. The
    // program is ended by SIGALRM when it takes minutes.
    int wait();
    const std::string& complaints() const { return m_complaints; } // complete after wait()

private:
    bool readComplaints();

    pid_t m_pid = -1;
    int m_complaintsEnd = -1;
    std::string m_complaints;
};

} // namespace lumora::cli::test
