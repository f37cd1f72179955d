// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/desktop/text_scale.h"

#include "app/desktop/desktop_settings.h"
#include "tests/app/fake_desktop.h"
#include "tests/app/private_bus.h"
#include "tests/app/wait_for.h"
#include "ui/theme/fonts.h"

#include <QApplication>

#include <gtest/gtest.h>

using namespace lumora;
using test::waitFor;

namespace {

class DesktopTextScale : public testing::Test
{
protected:
    DesktopTextScale() { m_portal.settings[m_space] = {{m_key, 2.0}}; }
    ~DesktopTextScale() override { fonts::install(*qApp, 1); }

    bool becomes(double scale)
    {
        return waitFor([&] { return QApplication::font().pixelSize() == qRound(13 * scale); });
    }

    const QString m_space = QStringLiteral("org.gnome.desktop.interface");
    const QString m_key = QStringLiteral("text-scaling-factor");
    test::PrivateBus m_bus;
    test::FakePortal m_portal{m_bus.connect()};
    DesktopSettings m_settings{m_bus.connect()};
};

TEST_F(DesktopTextScale, SizesTheTextAtTheStartAndWhenItChanges)
{
    const TextScale scale(m_settings, false);
    EXPECT_TRUE(becomes(2));
    m_portal.change(m_space, m_key, 1.0);
    EXPECT_TRUE(becomes(1));
}

TEST_F(DesktopTextScale, CountsOnceWhereTheScreenIsScaledByIt)
{
    const TextScale scale(m_settings, true);
    ASSERT_TRUE(waitFor([this] { return m_settings.textScale() == 2.0; }));
    EXPECT_TRUE(becomes(1));
    m_portal.change(m_space, m_key, 3.0);
    EXPECT_TRUE(becomes(1.5));
}

TEST_F(DesktopTextScale, StaysWhenTheDesktopSaysNonsense)
{
    const TextScale scale(m_settings, false);
    ASSERT_TRUE(becomes(2));
    m_portal.change(m_space, m_key, QStringLiteral("large"));
    m_portal.change(m_space, m_key, 0.0);
    m_portal.change(m_space, m_key, 1.5);
    EXPECT_TRUE(becomes(1.5));
}

} // namespace
