// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/intake/portal_file_transfer.h"

#include "tests/app/fake_file_transfer.h"
#include "tests/app/private_bus.h"
#include "tests/app/wait_for.h"

#include <QMimeData>

#include <gmock/gmock.h>

namespace lumora {
namespace {

using Files = std::optional<std::vector<std::filesystem::path>>;

class PortalDrop : public testing::Test
{
protected:
    Files retrieve()
    {
        std::optional<Files> answer;
        retrievePortalFiles(m_client, QStringLiteral("key"), &m_context,
                            [&](Files files) { answer = files; });
        EXPECT_TRUE(test::waitFor([&] { return answer.has_value(); }));
        return answer.value_or(Files());
    }

    test::PrivateBus m_bus;
    QDBusConnection m_client = m_bus.connect();
    QObject m_context;
};

TEST_F(PortalDrop, IsFetchedFromThePortal)
{
    const test::FakeFileTransfer portal(
        m_bus.connect(), {QStringLiteral("/run/doc/a.png"), QStringLiteral("/run/doc/é b.png")});
    EXPECT_EQ(retrieve(), (std::vector<std::filesystem::path>{"/run/doc/a.png", "/run/doc/\xC3\xA9 b.png"}));
    EXPECT_EQ(portal.key, QStringLiteral("key"));
}

TEST_F(PortalDrop, AnswersNothingWithoutAPortal)
{
    EXPECT_EQ(retrieve(), std::nullopt);
}

TEST(PortalTransferKey, EndsAtTheNulThatSendersCountIn)
{
    QMimeData data;
    EXPECT_TRUE(portalTransferKey(data).isEmpty());
    data.setData(QStringLiteral("application/vnd.portal.filetransfer"), QByteArray("12345\0", 6));
    EXPECT_EQ(portalTransferKey(data), QStringLiteral("12345"));
}

} // namespace
} // namespace lumora
