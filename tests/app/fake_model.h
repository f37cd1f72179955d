// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A processing model whose files are done at once, each with the same sizes; names with "bad" in them fail.
#pragma once

#include "model/processing_model.h"
#include "tests/app/wait_for.h"
#include "tests/support/settings.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace lumora::test {

class FakeModel
{
public:
    FakeModel() : m_model([] { return settings(); }, nullptr, services()) {}

    ProcessingModel& model() { return m_model; }
    const ProcessingModel& model() const { return m_model; }

    // One batch of so many files, to its end.
    bool finish(int files, const std::string& name = "picture")
    {
        std::vector<std::filesystem::path> paths;
        for (int i = 0; i < files; ++i)
            paths.push_back("/fake/" + name + std::to_string(i) + ".png");
        const int wanted = m_model.resultCount() + files;
        m_model.process(paths);
        return waitFor([&] { return m_model.resultCount() == wanted && !m_model.isProcessing(); });
    }

private:
    static ProcessingServices services()
    {
        ProcessingServices services;
        services.optimize = [](const std::filesystem::path& file, const OptimizerSettings&,
                               const OptimizerServices&) {
            if (file.native().find("bad") != std::string::npos) throw std::runtime_error("bad");
            return ProcessingResult(file, file, 3000, 1000, "Optimized", true);
        };
        services.expand = [](const std::vector<std::filesystem::path>& paths, std::stop_token) {
            return paths;
        };
        services.requestSaveAccess = [](const std::filesystem::path& folder) {
            return std::optional(folder);
        };
        services.debounce = std::chrono::milliseconds(0);
        return services;
    }

    ProcessingModel m_model;
};

} // namespace lumora::test
