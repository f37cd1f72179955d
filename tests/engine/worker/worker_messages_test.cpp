// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/worker/worker_messages.h"

#include <gtest/gtest.h>

#include <cstring>

namespace lumora::ImageOptimizer {
namespace {

WorkerRequest someRequest()
{
    return {.action = WorkerAction::encode,
            .settings = {.resizeMode = ResizeMode::longestEdge,
                         .maximumPixels = 1234,
                         .outputFormat = OutputFormat::heic,
                         .quality = 81.5,
                         .optimizeColorForSharing = true,
                         .removeColorManagement = false,
                         .removeMetadata = true},
            .typeIdentifier = "public.heic",
            .processors = 255};
}

WorkerReply someReply()
{
    WorkerReply reply;
    reply.head = {"public.jpeg", 5'000'000'000};
    reply.size = {4000, 3000};
    reply.answer = true;
    reply.losses = {"16 bits became 8", "Metadata not kept: EXIF"};
    return reply;
}

WorkerReply failure(WorkError::Kind kind, const std::string& reason)
{
    WorkerReply reply;
    reply.error = WorkError{kind, reason};
    return reply;
}

TEST(WorkerMessages, CarryRequests)
{
    EXPECT_EQ(requestIn(messageOf(someRequest())), someRequest());
}

TEST(WorkerMessages, DoNotLeaveAWorkerWithoutAProcessor)
{
    WorkerRequest request = someRequest();
    request.processors = 0;
    EXPECT_FALSE(requestIn(messageOf(request)));
}

TEST(WorkerMessages, CarryTheSettingsThatPixelsDependOn)
{
    const PixelSettings settings = someRequest().settings;
    EXPECT_EQ(PixelSettings::of(settings.settings()), settings);
}

TEST(WorkerMessages, CarryReplies)
{
    const auto reply = replyIn(messageOf(someReply()));
    ASSERT_TRUE(reply);
    EXPECT_FALSE(reply->error);
    EXPECT_EQ(reply->head.typeIdentifier, "public.jpeg");
    EXPECT_EQ(reply->head.memoryNeed, 5'000'000'000);
    EXPECT_EQ(reply->size, PictureSize(4000, 3000));
    EXPECT_TRUE(reply->answer);
    EXPECT_EQ(reply->losses, someReply().losses);
}

TEST(WorkerMessages, CarryFailures)
{
    for (const auto kind : {WorkError::Kind::unreadable, WorkError::Kind::notStarted}) {
        const auto reply = replyIn(messageOf(failure(kind, "No space left on device")));
        ASSERT_TRUE(reply && reply->error);
        EXPECT_EQ(reply->error->kind, kind);
        EXPECT_EQ(reply->error->reason, "No space left on device");
    }
}

TEST(WorkerMessages, CutTextsThatAreTooLongBetweenCharacters)
{
    const std::string reason = std::string(254, 'x') + "\u00E4";
    const auto reply = replyIn(messageOf(failure(WorkError::Kind::writing, reason)));
    ASSERT_TRUE(reply && reply->error);
    EXPECT_EQ(reply->error->reason, std::string(254, 'x'));
}

TEST(WorkerMessages, OfAnotherSizeOrVersionAreNone)
{
    auto request = messageOf(someRequest());
    EXPECT_FALSE(requestIn(std::span(request).first(request.size() - 1)));
    EXPECT_FALSE(requestIn({}));
    request[0] ^= std::byte{0x40};
    EXPECT_FALSE(requestIn(request));
    auto reply = messageOf(someReply());
    EXPECT_FALSE(replyIn(std::span(reply).first(WorkerRequest::bytes)));
    reply[0] ^= std::byte{0x40};
    EXPECT_FALSE(replyIn(reply));
}

TEST(WorkerMessages, WithChoicesThatThereAreNotAreNone)
{
    const auto bytes = messageOf(someRequest());
    constexpr std::size_t actionAt = 4;
    constexpr std::size_t modeAt = 5;
    constexpr std::size_t formatAt = 14;
    constexpr std::size_t flagAt = 23;
    for (const std::size_t at : {actionAt, modeAt, formatAt, flagAt}) {
        auto request = bytes;
        request[at] = std::byte{99};
        EXPECT_FALSE(requestIn(request)) << at;
    }
}

TEST(WorkerMessages, WithTextsThatCannotBeShownAreNone)
{
    for (const char* text : {"a\nb", "\x1B[2J", "\xFF"}) {
        WorkerReply losing;
        losing.losses = {"12345678"};
        auto reply = messageOf(losing);
        constexpr std::size_t lossAt = 4 + 1 + 256 + 64 + 3 * 8 + 1 + 1 + 1;
        std::memcpy(reply.data() + lossAt, text, std::strlen(text));
        EXPECT_FALSE(replyIn(reply)) << text;
    }
}

} // namespace
} // namespace lumora::ImageOptimizer
