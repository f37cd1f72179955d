// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/intake/portal_file_transfer.h"

#include "tests/app/private_bus.h"
#include "tests/app/wait_for.h"

#include <QMimeData>
#include <QVariantMap>

#include <gmock/gmock.h>

namespace lumora {
namespace {

using Files = std::optional<std::vector<std::filesystem::path>>;

class FileTransferPortal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.FileTransfer")

public Q_SLOTS:
    QStringList RetrieveFiles(const QString& key, const QVariantMap&)
    {
        return {QStringLiteral("/run/doc/") + key, QStringLiteral("/run/doc/é b.png")};
    }
};

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
    FileTransferPortal portal;
    QDBusConnection server = m_bus.connect();
    ASSERT_TRUE(server.registerObject(QStringLiteral("/org/freedesktop/portal/documents"), &portal,
                                      QDBusConnection::ExportAllSlots));
    ASSERT_TRUE(server.registerService(QStringLiteral("org.freedesktop.portal.Documents")));
    EXPECT_EQ(retrieve(), (std::vector<std::filesystem::path>{"/run/doc/key", "/run/doc/\xC3\xA9 b.png"}));
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

#include "portal_file_transfer_test.moc"
