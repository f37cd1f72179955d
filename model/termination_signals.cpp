// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/termination_signals.h"

#include <QSocketNotifier>

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>

namespace lumora {
namespace {

// The handler may only write to a descriptor. A signalfd was rejected: it needs the signals blocked in every
// thread, and encoders would inherit that.
std::atomic<int> writeEnd = -1;
static_assert(std::atomic<int>::is_always_lock_free);

void passOn(int signalNumber)
{
    const int savedErrno = errno;
    const auto byte = static_cast<unsigned char>(signalNumber);
    // A full pipe already holds more signals than are told apart.
    [[maybe_unused]] const ssize_t written = ::write(writeEnd, &byte, 1);
    errno = savedErrno;
}

} // namespace

TerminationSignals::TerminationSignals(QObject* parent) : QObject(parent)
{
    // Without one they end the program as they end any: nothing is lost by that.
    if (pipe2(m_pipe, O_CLOEXEC | O_NONBLOCK) != 0) return;
    writeEnd = m_pipe[1];
    for (const int signalNumber : {SIGINT, SIGTERM, SIGHUP})
        watch(signalNumber);
    auto* notifier = new QSocketNotifier(m_pipe[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &TerminationSignals::readPipe);
}

TerminationSignals::~TerminationSignals()
{
    for (const Former& former : m_former)
        sigaction(former.signalNumber, &former.action, nullptr);
    writeEnd = -1;
    close(m_pipe[0]);
    close(m_pipe[1]);
}

void TerminationSignals::watch(int signalNumber)
{
    Former former{signalNumber, {}};
    sigaction(signalNumber, nullptr, &former.action);
    // What nohup made deaf to a hang-up stays so. SIGINT is not asked: a script's background jobs begin with
    // it ignored, and who sends it to one means it.
    if (signalNumber == SIGHUP && former.action.sa_handler == SIG_IGN) return;
    struct sigaction action
    {
    };
    action.sa_handler = passOn;
    action.sa_flags = SA_RESTART;
    sigaction(signalNumber, &action, nullptr);
    m_former.push_back(former);
}

void TerminationSignals::readPipe()
{
    unsigned char signalNumber = 0;
    while (::read(m_pipe[0], &signalNumber, 1) == 1)
        Q_EMIT received(signalNumber);
}

} // namespace lumora
