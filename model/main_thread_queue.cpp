// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/main_thread_queue.h"

#include "system/file_descriptor.h"

#include <QSocketNotifier>

#include <sys/eventfd.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <deque>
#include <mutex>
#include <system_error>
#include <utility>

namespace lumora {
namespace {

// What one turn of the event loop may take before input and painting get theirs.
constexpr std::chrono::milliseconds slice{4};

} // namespace

struct MainThreadQueue::Shared
{
    FileDescriptor wake{::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)};
    std::mutex mutex;
    std::deque<std::function<void()>> calls; // guarded by mutex

    void ring() const
    {
        const std::uint64_t one = 1;
        // A full counter refuses more and is readable anyway.
        [[maybe_unused]] const ssize_t written = ::write(wake.get(), &one, sizeof one);
    }
    void silence() const
    {
        std::uint64_t count = 0;
        [[maybe_unused]] const ssize_t taken = ::read(wake.get(), &count, sizeof count);
    }
    // The descriptor stays readable until no call is left: the event loop of a dialog that a call opens must
    // come back here for the calls after it.
    std::function<void()> takeNext()
    {
        const std::lock_guard lock(mutex);
        if (calls.empty()) {
            silence();
            return {};
        }
        auto call = std::move(calls.front());
        calls.pop_front();
        return call;
    }
};

MainThreadQueue::MainThreadQueue(QObject* parent) : QObject(parent), m_shared(std::make_unique<Shared>())
{
    if (m_shared->wake.get() < 0) throw std::system_error(errno, std::generic_category(), "eventfd");
    auto* notifier = new QSocketNotifier(m_shared->wake.get(), QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &MainThreadQueue::run);
}

MainThreadQueue::~MainThreadQueue()
{
    qDeleteAll(children()); // the notifier goes before its descriptor
}

void MainThreadQueue::post(std::function<void()> call)
{
    {
        const std::lock_guard lock(m_shared->mutex);
        m_shared->calls.push_back(std::move(call));
    }
    m_shared->ring();
}

void MainThreadQueue::run()
{
    const auto end = std::chrono::steady_clock::now() + slice;
    while (const auto call = m_shared->takeNext()) {
        call();
        if (std::chrono::steady_clock::now() >= end) return;
    }
}

} // namespace lumora
