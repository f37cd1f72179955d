// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/interrupt_watcher.h"

#include <QSocketNotifier>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>

namespace lumora::cli {

namespace {

constexpr std::array watchedSignals{SIGINT, SIGTERM, SIGHUP};

// The handler may only write to a descriptor. A signalfd was rejected: it needs the signals blocked in every
// thread, and encoders would inherit that.
std::atomic<int> writeEnd = -1;
static_assert(std::atomic<int>::is_always_lock_free);

void passOn(int signalNumber)
{
    const int savedErrno = errno;
    const auto byte = static_cast<unsigned char>(signalNumber);
    // A full pipe already holds more interrupts than are told apart.
    [[maybe_unused]] const ssize_t written = ::write(writeEnd, &byte, 1);
    errno = savedErrno;
}

void handle(int signalNumber, void (*handler)(int))
{
    struct sigaction current
    {
    };
    sigaction(signalNumber, nullptr, &current);
    // What nohup made deaf to a hang-up stays so. SIGINT is not asked: a script's background jobs begin with
    // it ignored, and who sends it to one means it.
    if (signalNumber == SIGHUP && current.sa_handler == SIG_IGN) return;
    struct sigaction action
    {
    };
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigaction(signalNumber, &action, nullptr);
}

} // namespace

InterruptWatcher::InterruptWatcher(QObject* parent) : QObject(parent)
{
    if (pipe2(m_pipe, O_CLOEXEC | O_NONBLOCK) != 0) qFatal("Cannot make a pipe.");
    writeEnd = m_pipe[1];
    for (const int signalNumber : watchedSignals)
        handle(signalNumber, passOn);
    auto* notifier = new QSocketNotifier(m_pipe[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &InterruptWatcher::readPipe);
}

InterruptWatcher::~InterruptWatcher()
{
    for (const int signalNumber : watchedSignals)
        handle(signalNumber, SIG_DFL);
    writeEnd = -1;
    close(m_pipe[0]);
    close(m_pipe[1]);
}

void InterruptWatcher::readPipe()
{
    unsigned char signalNumber = 0;
    while (::read(m_pipe[0], &signalNumber, 1) == 1)
        Q_EMIT interrupted(signalNumber);
}

} // namespace lumora::cli
