// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/instance/single_instance.h"

#include "app/instance/application_id.h"
#include "tests/app/private_bus.h"
#include "tests/app/wait_for.h"

#include <QDBusMessage>
#include <QDBusPendingCall>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <thread>

using namespace lumora;
using namespace std::chrono_literals;
using test::waitFor;
using Files = std::vector<std::filesystem::path>;

namespace {

constexpr SingleInstance::Patience shortPatience{100ms, 2};

// A launch as another process makes it: its calls block a thread of its own.
class Launch
{
public:
    Launch(const QDBusConnection& bus, const LaunchRequest& request, SingleInstance::Patience patience = {})
        : m_thread([=, this] {
              SingleInstance instance(bus);
              m_left = instance.start(request, patience);
              m_ended = true;
          })
    {
    }
    ~Launch() { m_thread.join(); }

    bool hasEnded() const { return m_ended; }
    const std::optional<LaunchRequest>& left() const { return m_left; }

private:
    std::optional<LaunchRequest> m_left;
    std::atomic<bool> m_ended = false;
    std::jthread m_thread;
};

class SingleInstanceTest : public testing::Test
{
protected:
    void listen(SingleInstance& instance)
    {
        QObject::connect(&instance, &SingleInstance::opened, &m_context, [this](const Files& files) {
            ++m_calls;
            m_opened.insert(m_opened.end(), files.begin(), files.end());
        });
        QObject::connect(&instance, &SingleInstance::activated, &m_context, [this](const QByteArray& token) {
            ++m_activations;
            m_token = token;
        });
        QObject::connect(&instance, &SingleInstance::preferencesRequested, &m_context,
                         [this] { ++m_preferences; });
    }

    QDBusMessage call(const char* method, const QVariantList& arguments)
    {
        QDBusMessage message = QDBusMessage::createMethodCall(applicationId, applicationObjectPath,
                                                              QStringLiteral("org.freedesktop.Application"),
                                                              QLatin1String(method));
        message.setArguments(arguments);
        QDBusPendingCall pending = m_bus.connect().asyncCall(message);
        EXPECT_TRUE(waitFor([&] { return pending.isFinished(); }));
        return pending.reply();
    }

    test::PrivateBus m_bus;
    QObject m_context;
    Files m_opened;
    int m_calls = 0;
    int m_activations = 0;
    int m_preferences = 0;
    QByteArray m_token;
};

TEST_F(SingleInstanceTest, TheFirstLaunchKeepsItsFilesToItself)
{
    SingleInstance first(m_bus.connect());
    EXPECT_EQ(first.start({{"/a.png"}, true}), (LaunchRequest{{"/a.png"}, true}));
}

TEST_F(SingleInstanceTest, WithoutABusEveryLaunchIsAFirstOne)
{
    SingleInstance alone(
        QDBusConnection::connectToBus(QStringLiteral("unix:path=/nonexistent"), QStringLiteral("none")));
    EXPECT_EQ(alone.start({{"/a.png"}}), (LaunchRequest{{"/a.png"}}));
    QDBusConnection::disconnectFromBus(QStringLiteral("none"));
}

TEST_F(SingleInstanceTest, ASecondLaunchHandsItsFilesOverByteByByteAndEnds)
{
    SingleInstance first(m_bus.connect());
    listen(first);
    ASSERT_TRUE(first.start({}));
    const Files files{"/p/a b#c%.png", "/p/\xE9\xFF.jpg", "/p/\xC3\xA9.tif"};
    Launch second(m_bus.connect(), {files});
    ASSERT_TRUE(waitFor([&] { return second.hasEnded(); }));
    EXPECT_EQ(second.left(), std::nullopt);
    EXPECT_EQ(m_opened, files);
    EXPECT_EQ(m_activations, 0);
}

TEST_F(SingleInstanceTest, VeryManyFilesArriveInOrderInSeveralCalls)
{
    SingleInstance first(m_bus.connect());
    listen(first);
    ASSERT_TRUE(first.start({}));
    Files files;
    for (int i = 0; i < 20000; ++i)
        files.push_back("/some/folder/of/many/pictures/" + std::to_string(i) + ".png");
    Launch second(m_bus.connect(), {files});
    ASSERT_TRUE(waitFor([&] { return second.hasEnded(); }));
    EXPECT_EQ(m_opened, files);
    EXPECT_GT(m_calls, 1);
}

TEST_F(SingleInstanceTest, ASecondLaunchWithoutFilesActivatesTheFirst)
{
    SingleInstance first(m_bus.connect());
    listen(first);
    ASSERT_TRUE(first.start({}));
    Launch second(m_bus.connect(), {});
    ASSERT_TRUE(waitFor([&] { return second.hasEnded(); }));
    EXPECT_EQ(m_activations, 1);
    // As main() was given it by the launcher.
    EXPECT_EQ(m_token, "token-1");
}

TEST_F(SingleInstanceTest, ASecondLaunchForThePreferencesShowsThoseOfTheFirst)
{
    SingleInstance first(m_bus.connect());
    listen(first);
    ASSERT_TRUE(first.start({}));
    Launch second(m_bus.connect(), {{}, true});
    ASSERT_TRUE(waitFor([&] { return second.hasEnded(); }));
    EXPECT_EQ(m_preferences, 1);
    EXPECT_EQ(m_activations, 0);
}

TEST_F(SingleInstanceTest, AnActionThatDoesNotExistIsAnError)
{
    SingleInstance first(m_bus.connect());
    listen(first);
    ASSERT_TRUE(first.start({}));
    const QDBusMessage reply =
        call("ActivateAction", {QStringLiteral("explode"), QVariantList(), QVariantMap()});
    EXPECT_EQ(reply.type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(m_preferences, 0);
}

TEST_F(SingleInstanceTest, UrisThatAreNoFilesOfThisMachineAreLeftOut)
{
    SingleInstance first(m_bus.connect());
    listen(first);
    ASSERT_TRUE(first.start({}));
    const QStringList uris{QStringLiteral("sftp://host/a.png"), QStringLiteral("file:///b.png")};
    EXPECT_EQ(call("Open", {uris, QVariantMap()}).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(m_opened, Files{"/b.png"});
}

TEST_F(SingleInstanceTest, AnInstanceThatIsAboutToEndRefusesAndTheNextLaunchTakesItsPlace)
{
    SingleInstance first(m_bus.connect());
    listen(first);
    ASSERT_TRUE(first.start({}));
    first.giveUp();
    SingleInstance second(m_bus.connect());
    EXPECT_EQ(second.start({{"/a.png"}}), (LaunchRequest{{"/a.png"}}));
    EXPECT_TRUE(m_opened.empty());
}

TEST_F(SingleInstanceTest, ALateRequestOfAnEndingInstanceIsRefusedNotSwallowed)
{
    QDBusConnection bus = m_bus.connect();
    SingleInstance first(bus);
    listen(first);
    ASSERT_TRUE(first.start({}));
    first.giveUp();
    QDBusMessage message =
        QDBusMessage::createMethodCall(bus.baseService(), applicationObjectPath,
                                       QStringLiteral("org.freedesktop.Application"), QStringLiteral("Open"));
    message << QStringList{QStringLiteral("file:///a.png")} << QVariantMap();
    QDBusPendingCall pending = m_bus.connect().asyncCall(message);
    ASSERT_TRUE(waitFor([&] { return pending.isFinished(); }));
    EXPECT_TRUE(pending.isError());
    EXPECT_TRUE(m_opened.empty());
}

// The owner has the name but never reads: the test's thread is not in its event loop while the launch blocks
// it.
TEST_F(SingleInstanceTest, AnOwnerThatNeverAnswersCostsNoFile)
{
    SingleInstance silent(m_bus.connect());
    ASSERT_TRUE(silent.start({}));
    SingleInstance second(m_bus.connect());
    EXPECT_EQ(second.start({{"/a.png"}}, shortPatience), (LaunchRequest{{"/a.png"}}));
}

// What the launch sent is read once it has given up. Timers of the bus library may fire early, each at
// another moment: hence several launches.
TEST_F(SingleInstanceTest, AnOwnerThatNeverAnswersIsAskedOnceByALaunchAndIsComplainedOf)
{
    SingleInstance silent(m_bus.connect());
    listen(silent);
    ASSERT_TRUE(silent.start({}));
    constexpr int launches = 8;
    for (int i = 0; i < launches; ++i) {
        SingleInstance second(m_bus.connect());
        testing::internal::CaptureStderr();
        EXPECT_TRUE(second.start({{"/a.png"}}, {std::chrono::milliseconds(200 + i), 5}));
        EXPECT_NE(testing::internal::GetCapturedStderr().find("does not answer"), std::string::npos);
    }
    ASSERT_EQ(call("Open", {QStringList{QStringLiteral("file:///end.png")}, QVariantMap()}).type(),
              QDBusMessage::ReplyMessage);
    ASSERT_FALSE(m_opened.empty());
    EXPECT_EQ(m_opened.back(), "/end.png");
    EXPECT_EQ(m_calls, launches + 1);
    EXPECT_LE(SingleInstance::Patience().reply, std::chrono::seconds(3));
}

TEST_F(SingleInstanceTest, OfEightSimultaneousLaunchesOneStaysAndNoFileIsLost)
{
    SingleInstance first(m_bus.connect());
    listen(first);
    ASSERT_TRUE(first.start({}));
    std::vector<std::unique_ptr<Launch>> launches;
    launches.reserve(8);
    for (int i = 0; i < 8; ++i)
        launches.push_back(
            std::make_unique<Launch>(m_bus.connect(), LaunchRequest{{"/" + std::to_string(i)}}));
    for (const auto& launch : launches)
        ASSERT_TRUE(waitFor([&] { return launch->hasEnded(); }));
    std::sort(m_opened.begin(), m_opened.end());
    EXPECT_EQ(m_opened, (Files{"/0", "/1", "/2", "/3", "/4", "/5", "/6", "/7"}));
}

} // namespace
