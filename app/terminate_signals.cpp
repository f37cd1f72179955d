// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/terminate_signals.h"

#include "app/termination.h"

#include <QSocketNotifier>

#include <csignal>
#include <cstdint>
#include <sys/eventfd.h>
#include <unistd.h>

namespace lumora {
namespace {

// A handler may do no more than write. Blocking the signals instead would pass the mask on to child
// processes.
volatile std::sig_atomic_t wakeUp = -1;

void handle(int)
{
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = write(wakeUp, &one, sizeof one);
}

} // namespace

TerminateSignals::TerminateSignals(QObject* parent)
    : QObject(parent), m_descriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
    if (m_descriptor < 0) return;
    wakeUp = m_descriptor;
    auto* notifier = new QSocketNotifier(m_descriptor, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [notifier] {
        notifier->setEnabled(false);
        Termination::shared().begin();
    });
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        std::signal(signal, handle);
}

TerminateSignals::~TerminateSignals()
{
    if (m_descriptor < 0) return;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        std::signal(signal, SIG_DFL);
    close(m_descriptor);
}

} // namespace lumora
