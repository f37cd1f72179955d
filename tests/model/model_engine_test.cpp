// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The processing model on the real optimizer, real pictures and real encoder processes.
#include "model/processing_model.h"
#include "model/settings_store.h"
#include "model/stats_store.h"
#include "tests/model/event_loop.h"
#include "tests/support/fake_encoder.h"
#include "tests/support/files.h"

#include <gtest/gtest.h>

#include <csignal>

namespace lumora {
namespace {

namespace fs = std::filesystem;

class ModelOnTheEngine : public test::EncoderTest
{
protected:
    ModelOnTheEngine() { fs::create_directories(m_pictures); }

    const fs::path m_pictures = m_folder / "pictures";
    SettingsStore m_settings{QString::fromStdString((m_folder / "Lumora.ini").string())};
    StatsStore m_stats{m_folder / "data"};

    ProcessingServices services() const
    {
        auto services = ProcessingServices::system();
        services.debounce = std::chrono::milliseconds(0);
        services.workers = 2;
        services.workerProgram = LUMORA_WORKER;
        return services;
    }
    void addPicture(const std::string& name)
    {
        const fs::path plain = m_folder / "plain.png";
        test::save(plain, test::corneredPicture(64, 48));
        fs::rename(plain, m_pictures / name);
    }
};

TEST_F(ModelOnTheEngine, OptimizesADroppedFolderWithNamesOfAnyBytes)
{
    installReal();
    addPicture("a b.png");
    addPicture("\xff\xfe.png");
    test::writeFile(m_pictures / "broken.png", "no picture");
    ProcessingModel model(m_settings, m_stats, services());
    bool completed = false;
    model.setOnComplete([&] { completed = true; });
    model.process({m_pictures});
    ASSERT_TRUE(test::waitUntil([&] { return completed; }));
    EXPECT_EQ(model.resultCount(), 3);
    EXPECT_EQ(m_stats.stats().filesSucceeded, 2);
    EXPECT_TRUE(fs::exists(m_pictures / "a b.webp"));
    EXPECT_TRUE(fs::exists(m_pictures / "\xff\xfe.webp"));
    EXPECT_TRUE(fs::is_empty(m_temporary));
}

// Every encoder writes its process id and then does nothing for longer than the test lasts.
TEST_F(ModelOnTheEngine, DestructionInABatchKillsTheEncodersAndLeavesNoTemporaryFile)
{
    const fs::path ids = m_folder / "ids";
    fs::create_directories(ids);
    installBundled("touch '" + ids.string() + "'/$$\nexec sleep 600");
    for (const char* name : {"a.png", "b.png", "c.png"})
        addPicture(name);
    auto model = std::make_unique<ProcessingModel>(m_settings, m_stats, services());
    model->process({m_pictures});
    const auto running = [&] { return std::distance(fs::directory_iterator(ids), {}); };
    ASSERT_TRUE(test::waitUntil([&] { return running() == 2; }));
    model.reset();
    for (const auto& id : fs::directory_iterator(ids))
        EXPECT_EQ(::kill(std::stoi(id.path().filename()), 0), -1) << "still runs";
    EXPECT_EQ(running(), 2);
    EXPECT_TRUE(fs::is_empty(m_temporary));
    EXPECT_EQ(std::distance(fs::directory_iterator(m_pictures), {}), 3);
}

} // namespace
} // namespace lumora
