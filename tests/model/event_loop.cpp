// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/model/event_loop.h"

#include <QCoreApplication>
#include <QTimer>

#include <gtest/gtest.h>

#include <memory>

namespace lumora::test {
namespace {

class Application : public ::testing::Environment
{
public:
    void SetUp() override { m_application = std::make_unique<QCoreApplication>(m_count, m_arguments); }
    void TearDown() override { m_application.reset(); }

private:
    int m_count = 1;
    char m_name[6] = "tests";
    char* m_arguments[2] = {m_name, nullptr};
    std::unique_ptr<QCoreApplication> m_application;
};

[[maybe_unused]] const auto* const application = ::testing::AddGlobalTestEnvironment(new Application);

} // namespace

bool waitUntil(const std::function<bool()>& condition)
{
    QTimer guard;
    guard.setSingleShot(true);
    guard.start(30'000);
    QTimer tick; // some conditions are met by workers, which wake nobody
    tick.start(1);
    while (!condition() && guard.isActive()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return condition();
}

void handleEvents()
{
    QCoreApplication::processEvents();
}

} // namespace lumora::test
