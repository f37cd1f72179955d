// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A program that is kept at hand to answer messages, and that is not trusted to come back.
#pragma once

#include "system/file_descriptor.h"
#include "system/result.h"

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace lumora {

// What a process has taken so far.
struct ProcessUsage
{
    std::chrono::milliseconds processorTime;
    std::int64_t residentBytes;
    std::int64_t virtualBytes;
};

// Ends with this object, and with the thread that started it. Use from one thread at a time, but for kill().
class ServantProcess
{
public:
    // The program finds its end of a socket of messages (SOCK_SEQPACKET) as its descriptor 3, no environment,
    // and nothing of this process. An Error's description is the system's reason alone.
    static Result<ServantProcess> start(const std::filesystem::path& executable,
                                        std::vector<std::string> arguments = {});

    ServantProcess(ServantProcess&& other) noexcept;
    ServantProcess& operator=(ServantProcess&&) = delete;
    ~ServantProcess();

    // Our end of the socket.
    int channel() const { return m_channel.get(); }

    pid_t number() const { return m_process; }

    // At once. Any thread, as long as the object lives.
    void kill() const;
    // Kills it and waits for its end: its exit status, 128 + the signal's number after a signal. It had ended
    // by itself if it tells another story than SIGKILL's.
    int end();

    // Absent when the process has ended.
    std::optional<ProcessUsage> usage() const;
    // More than these in all and an allocation fails, or the process is killed. May be changed at any time.
    void limitMemory(std::int64_t virtualBytes) const;
    void limitProcessorTime(std::chrono::seconds most) const;

private:
    ServantProcess(pid_t process, FileDescriptor channel);

    pid_t m_process; // 0 once its end was waited for
    FileDescriptor m_channel;
};

} // namespace lumora
