// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Files whose pixels are worked on in another process: the same outcome as in this one, and whatever becomes
// of that process is the matter of one row.
#include "engine/worker/remote_picture_work.h"

#include "engine/local/local_picture_work.h"
#include "system/confinement.h"
#include "system/mapped_file.h"
#include "system/memory_file.h"
#include "system/message_channel.h"
#include "system/regular_file.h"
#include "tests/engine/optimizer_test.h"
#include "tests/engine/worker/strange_order.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <future>
#include <optional>
#include <thread>
#include <vector>

namespace lumora {
namespace {

using ImageOptimizer::WorkerLimits;
using ImageOptimizer::WorkerProcesses;
using test::SettingsDraft;
using test::StrangeOrder;
using namespace std::chrono_literals;

constexpr const char* unreadable = "The image could not be read.";

class Workers : public test::OptimizerTest
{
protected:
    void useWorkers(const std::filesystem::path& program, const WorkerLimits& limits = {})
    {
        m_processes.emplace(program, true, limits);
        m_services.pixels = [this](std::stop_token stop) {
            return std::make_unique<ImageOptimizer::RemotePictureWork>(*m_processes, std::move(stop));
        };
    }

    std::filesystem::path strangePhoto(StrangeOrder order, const std::string& name = "strange.jpg")
    {
        auto file = photo(name);
        test::writeText(file, test::readBytes(file) + test::orderText(order));
        return file;
    }

    std::unique_ptr<ServantProcess> newWorker()
    {
        auto started = m_processes->start();
        EXPECT_TRUE(started);
        return std::move(*started);
    }

    // One worker, which the next file finds idle.
    pid_t idleWorker()
    {
        auto process = m_processes->takeIdle();
        if (!process) process = newWorker();
        const pid_t number = process->number();
        m_processes->giveBack(std::move(process));
        return number;
    }

    std::optional<WorkerProcesses> m_processes;
};

class StrangeWorkers : public Workers
{
protected:
    StrangeWorkers() { useWorkers(LUMORA_STRANGE_WORKER); }

    void expectNextToWork()
    {
        EXPECT_TRUE(optimize(photo("next.png"), {.outputFormat = OutputFormat::jpeg}).isSuccess);
    }
};

TEST_F(Workers, DrawTheVerySameParts)
{
    useWorkers(LUMORA_WORKER);
    const auto source = openRegularFile(photo("a.jpg", {.profile = "p3"}));
    const PicturePart part{30, 20, 11, 7, 15, 10};
    const auto drawnBy = [&](ImageOptimizer::PictureWork& work) {
        EXPECT_TRUE(work.open(source->get(), ImageOptimizer::PixelSettings{}.settings()));
        EXPECT_FALSE(work.look()->profile.empty());
        const auto output = makeMemoryFile(std::size_t{15} * 10 * 4);
        EXPECT_TRUE(work.drawPart(output->get(), part));
        const auto rows = MappedFile::map(output->get());
        return std::vector(rows->bytes().begin(), rows->bytes().end());
    };
    ImageOptimizer::LocalPictureWork here;
    EXPECT_EQ(drawnBy(*m_services.pixels({})), drawnBy(here));
}

TEST_F(Workers, MakeTheVerySameFiles)
{
    const auto source = photo("a.jpg", {.profile = "p3"});
    for (const auto format : allCases<OutputFormat>) {
        const SettingsDraft draft{.outputFormat = format, .removeMetadata = false, .filenameSuffix = "-out"};
        m_services.pixels = test::localServices().pixels;
        const auto here = optimize(source, draft);
        const std::string bytes = test::readBytes(*here.outputURL);
        useWorkers(LUMORA_WORKER);
        const auto there = optimize(source, draft);
        EXPECT_EQ(there.outputURL, here.outputURL) << title(format);
        EXPECT_EQ(there.message, here.message) << title(format);
        EXPECT_EQ(test::readBytes(*there.outputURL), bytes) << title(format);
    }
}

TEST_F(Workers, TellOfDamageAndLossesAsThisProcessDoes)
{
    useWorkers(LUMORA_WORKER);
    test::writeText(m_in / "text.jpg", "no picture");
    EXPECT_EQ(failureOf(m_in / "text.jpg"), unreadable);
    const auto cut = photo("cut.png");
    test::writeText(cut, test::readBytes(cut).substr(0, 200));
    EXPECT_EQ(failureOf(cut), unreadable);
    const auto deep = photo("deep.png", {.sixteenBits = true});
    EXPECT_THAT(optimize(deep, {.outputFormat = OutputFormat::jpeg}).message,
                testing::EndsWith(". 16 bits became 8"));
}

TEST_F(Workers, AskBeforeTheyReplaceWhatIsWholeOnly)
{
    useWorkers(LUMORA_WORKER);
    test::writeText(m_in / "a.jpg", "an earlier file");
    const SettingsDraft draft{.outputFormat = OutputFormat::jpeg, .warnBeforeOverwrite = true};
    EXPECT_TRUE(optimize(photo("a.png"), draft).isSuccess);
    EXPECT_THAT(m_asked, testing::ElementsAre("a.jpg"));
    test::writeText(m_in / "b.jpg", "an earlier file");
    test::writeText(m_in / "b.png", "no picture");
    EXPECT_EQ(failureOf(m_in / "b.png", draft), unreadable);
    EXPECT_THAT(m_asked, testing::SizeIs(1));
    EXPECT_EQ(test::readBytes(m_in / "b.jpg"), "an earlier file");
}

TEST_F(Workers, AreUsedAgain)
{
    useWorkers(LUMORA_WORKER);
    const pid_t first = idleWorker();
    optimize(photo("a.png"), {.outputFormat = OutputFormat::jpeg});
    EXPECT_EQ(idleWorker(), first);
}

TEST_F(Workers, AreReplacedWhenTheyHaveGrown)
{
    useWorkers(LUMORA_WORKER, {.keptBytes = 0});
    EXPECT_NE(idleWorker(), idleWorker());
}

TEST_F(Workers, ThatDiedWhileIdleAreReplaced)
{
    useWorkers(LUMORA_WORKER);
    auto process = newWorker();
    const pid_t number = process->number();
    const FileDescriptor channel(::dup(process->channel()));
    m_processes->giveBack(std::move(process));
    ::kill(number, SIGKILL);
    ASSERT_TRUE(hasNews(channel.get(), 10s));
    EXPECT_TRUE(optimize(photo("a.png"), {.outputFormat = OutputFormat::jpeg}).isSuccess);
}

TEST_F(Workers, ThatEndBeforeTheyAreReadySaySo)
{
    useWorkers("/bin/false");
    EXPECT_EQ(failureOf(photo("a.jpg")), "The worker could not be started: it ended with status 1");
}

TEST_F(Workers, ThatCannotBeStartedFailTheirFilesOnly)
{
    const auto file = photo("a.jpg");
    useWorkers(m_folder / "missing");
    EXPECT_EQ(failureOf(file), "The worker could not be started: No such file or directory");
    EXPECT_TRUE(std::filesystem::exists(file));
}

TEST_F(StrangeWorkers, DieOfOneFileOnly)
{
    EXPECT_EQ(failureOf(strangePhoto(StrangeOrder::dieOnOpening)), unreadable);
    expectNextToWork();
}

TEST_F(StrangeWorkers, ThatDieOfAnEncoderBlameTheOutputAndLeaveNothing)
{
    const auto file = strangePhoto(StrangeOrder::dieEncoding);
    test::writeText(m_in / "strange.png", "an earlier file");
    EXPECT_EQ(failureOf(file, {.outputFormat = OutputFormat::png}), "Could not finish writing strange.png.");
    EXPECT_EQ(test::readBytes(m_in / "strange.png"), "an earlier file");
    EXPECT_EQ(filesIn(m_in), 2U);
    expectNextToWork();
}

TEST_F(StrangeWorkers, ThatNeitherAnswerNorWorkAreGivenUp)
{
    useWorkers(LUMORA_STRANGE_WORKER, {.silence = 1s});
    EXPECT_EQ(failureOf(strangePhoto(StrangeOrder::sleep)), unreadable);
    expectNextToWork();
}

TEST_F(StrangeWorkers, ThatWorkForEverAreEnded)
{
    useWorkers(LUMORA_STRANGE_WORKER, {.processorTime = 1s, .processorTimeAMegabyte = 0s});
    EXPECT_EQ(failureOf(strangePhoto(StrangeOrder::spinEncoding), {.outputFormat = OutputFormat::png}),
              "Could not finish writing strange.png.");
    expectNextToWork();
}

TEST_F(StrangeWorkers, ThatTalkNonsenseAreNotBelieved)
{
    EXPECT_EQ(failureOf(strangePhoto(StrangeOrder::talkNonsense)), unreadable);
    expectNextToWork();
}

TEST_F(StrangeWorkers, HaveNoWayOut)
{
    ASSERT_TRUE(confinementOffered().hasCallFilter);
    EXPECT_EQ(failureOf(strangePhoto(StrangeOrder::leave)), unreadable);
    EXPECT_EQ(failureOf(strangePhoto(StrangeOrder::startProgram)), unreadable);
    expectNextToWork();
}

TEST_F(StrangeWorkers, InheritNothing)
{
    const FileDescriptor inheritable(::open(m_folder.path().c_str(), O_RDONLY));
    ASSERT_TRUE(std::getenv("PATH"));
    EXPECT_TRUE(
        optimize(strangePhoto(StrangeOrder::dieIfRich), {.outputFormat = OutputFormat::png}).isSuccess);
}

TEST_F(StrangeWorkers, ShareTheProcessorsOut)
{
    const unsigned processors = std::thread::hardware_concurrency();
    if (processors < 2) GTEST_SKIP() << "there is one processor";
    const auto file = strangePhoto(StrangeOrder::dieWithOneProcessor);
    const SettingsDraft draft{.outputFormat = OutputFormat::png};
    EXPECT_TRUE(optimize(file, draft).isSuccess);
    std::vector<std::unique_ptr<ImageOptimizer::PictureWork>> others(processors);
    std::ranges::generate(others, [this] { return m_services.pixels({}); });
    EXPECT_EQ(failureOf(file, draft), "Could not finish writing strange.png.");
    others.clear();
    EXPECT_TRUE(optimize(file, draft).isSuccess);
}

TEST_F(StrangeWorkers, ThatRunShortOfMemorySaySo)
{
    EXPECT_EQ(failureOf(strangePhoto(StrangeOrder::runShortOfMemory)),
              "There is not enough memory for this image.");
    expectNextToWork();
}

TEST_F(StrangeWorkers, GetNoMoreMemoryThanTheirFileNeeds)
{
    constexpr std::int64_t megabytes = std::int64_t{64} << 20U;
    useWorkers(LUMORA_STRANGE_WORKER, {.openingBytes = megabytes});
    EXPECT_EQ(failureOf(strangePhoto(StrangeOrder::eatMemory)), "There is not enough memory for this image.");
    expectNextToWork();
}

TEST_F(StrangeWorkers, ThatLieAboutTheirOutputTakeNoOriginalAlong)
{
    const auto file = strangePhoto(StrangeOrder::lieAboutOutput);
    EXPECT_THAT(failureOf(file, {.outputFormat = OutputFormat::png, .moveOriginalToTrash = true}),
                testing::StartsWith("Could not finish writing strange.png"));
    EXPECT_TRUE(std::filesystem::exists(file));
}

TEST_F(StrangeWorkers, EndAtOnceWhenTheWorkIsStopped)
{
    const auto file = strangePhoto(StrangeOrder::sleep);
    std::stop_source stop;
    m_services.stop = stop.get_token();
    auto failure = std::async(std::launch::async, [&] { return failureOf(file); });
    stop.request_stop();
    EXPECT_EQ(failure.get(), "The work was stopped.");
}

} // namespace
} // namespace lumora
