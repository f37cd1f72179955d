// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A processing model on a fake optimizer that a test holds back and lets go, a clock moved by hand, real
// folders and real statistics.
#pragma once

#include "engine/file_input_resolver.h"
#include "model/processing_model.h"
#include "model/stats_store.h"
#include "records/errors.h"
#include "tests/model/event_loop.h"
#include "tests/model/manual_delay.h"
#include "tests/support/files.h"
#include "tests/support/settings.h"
#include "tests/support/temporary_directory.h"

#include <QStringList>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace lumora::test {

// Files pass one by one while it is closed, in the order in which the test lets them go.
class Gate
{
public:
    void close() { m_isOpen = false; }
    void open()
    {
        const std::lock_guard lock(m_mutex);
        m_isOpen = true;
        m_changed.notify_all();
    }
    void letGo(const std::string& name)
    {
        const std::lock_guard lock(m_mutex);
        m_released.push_back(name);
        m_changed.notify_all();
    }
    // Worker: returns when it may go on, false when killed meanwhile.
    bool pass(const std::string& name, const std::stop_token& kill)
    {
        std::unique_lock lock(m_mutex);
        m_started.push_back(name);
        m_inFlight.push_back(name);
        m_mostInFlight = std::max(m_mostInFlight, m_inFlight.size());
        const bool passed = m_changed.wait(lock, kill, [&] {
            return m_isOpen || std::find(m_released.begin(), m_released.end(), name) != m_released.end();
        });
        m_inFlight.erase(std::find(m_inFlight.begin(), m_inFlight.end(), name));
        return passed;
    }
    std::vector<std::string> started()
    {
        const std::lock_guard lock(m_mutex);
        return m_started;
    }
    std::size_t inFlight()
    {
        const std::lock_guard lock(m_mutex);
        return m_inFlight.size();
    }
    std::size_t mostInFlight()
    {
        const std::lock_guard lock(m_mutex);
        return m_mostInFlight;
    }

private:
    std::mutex m_mutex;
    std::condition_variable_any m_changed;
    bool m_isOpen = true;
    std::vector<std::string> m_released;
    std::vector<std::string> m_started;
    std::vector<std::string> m_inFlight;
    std::size_t m_mostInFlight = 0;
};

class ModelTest : public ::testing::Test
{
protected:
    TemporaryDirectory m_directory;
    Gate m_gate;
    SettingsDraft m_settings;
    ProcessingServices m_services = fakes();
    ManualDelay* m_delay = nullptr;
    StatsStore m_stats{m_directory / "data"};
    std::unique_ptr<ProcessingModel> m_model;
    QStringList m_statuses;
    std::vector<double> m_qualities; // that the optimizer was given; read when idle
    std::mutex m_mutex;

    ProcessingServices fakes()
    {
        ProcessingServices services;
        services.optimize = [this](const auto& file, const auto& settings, const auto& optimizer) {
            return optimize(file, settings, optimizer);
        };
        services.expand = FileInputResolver::imageURLs;
        services.requestSaveAccess = [](const auto& folder) { return std::optional(folder); };
        services.activeProcessorCount = 8;
        services.makeDelay = [this](auto call) { return std::make_unique<ManualDelay>(m_delay, call); };
        return services;
    }

    virtual ProcessingResult optimize(const std::filesystem::path& file, const OptimizerSettings& settings,
                                      const OptimizerServices& services)
    {
        {
            const std::lock_guard lock(m_mutex);
            m_qualities.push_back(settings.quality);
        }
        const std::string name = file.filename().string();
        if (!m_gate.pass(name, services.stop)) throw PlatformError("killed");
        if (name.starts_with("bad")) throw ImageOptimizerError::unreadableImage();
        return {file, file, 100, 60, "Saved", true};
    }

    ProcessingModel& model()
    {
        if (m_model) return *m_model;
        m_model =
            std::make_unique<ProcessingModel>([this] { return settings(m_settings); }, &m_stats, m_services);
        QObject::connect(m_model.get(), &ProcessingModel::statusTextChanged,
                         [this] { m_statuses.append(m_model->statusText()); });
        return *m_model;
    }

    std::filesystem::path file(const std::string& name) { return m_directory / name; }
    std::vector<std::filesystem::path> files(int count, const std::string& prefix = "")
    {
        std::vector<std::filesystem::path> made;
        made.reserve(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i)
            made.push_back(file(prefix + std::to_string(i) + ".png"));
        return made;
    }
    void drop(const std::vector<std::filesystem::path>& paths)
    {
        model().process(paths);
        m_delay->advance(std::chrono::milliseconds(150));
    }
    bool waitUntilDone()
    {
        return waitUntil([this] { return !model().isProcessing(); });
    }
    bool waitForStatus(const char* text)
    {
        return waitUntil([&] { return model().statusText() == QString::fromUtf8(text); });
    }
    std::vector<std::string> rows()
    {
        std::vector<std::string> names;
        names.reserve(static_cast<std::size_t>(model().resultCount()));
        for (int row = 0; row < model().resultCount(); ++row)
            names.push_back(model().resultAt(row).sourceURL.filename().string());
        return names;
    }
};

} // namespace lumora::test
