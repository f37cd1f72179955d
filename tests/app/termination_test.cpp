// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/termination.h"

#include <QCoreApplication>
#include <QTimer>

#include <gtest/gtest.h>

#include <string>

using namespace lumora;

namespace {

TEST(Termination, IsAnnouncedBeforeWhatStillArrivesAndEndsTheEventLoop)
{
    QObject context;
    std::string order;
    QObject::connect(&Termination::shared(), &Termination::begun, &context, [&] { order += "announced "; });
    QTimer::singleShot(0, &context, [&] {
        QMetaObject::invokeMethod(
            &context, [&] { order += "arrived "; }, Qt::QueuedConnection);
        Termination::shared().begin();
    });
    QCoreApplication::exec();
    QCoreApplication::processEvents();
    EXPECT_EQ(order, "announced arrived ");
}

} // namespace
