// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Batches of any length that cost the optimizer nothing, and the clock of the measuring programs.
#pragma once

#include "model/processing_model.h"

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace lumora::bench {

using Clock = std::chrono::steady_clock;
using Files = std::vector<std::filesystem::path>;

inline double milliseconds(Clock::duration time)
{
    return std::chrono::duration<double, std::milli>(time).count();
}

inline Files fileNames(int count)
{
    Files files;
    for (int i = 0; i < count; ++i)
        files.emplace_back("/home/someone/Pictures/2026/A holiday by the sea/IMG_" + std::to_string(i) +
                           ".jpg");
    return files;
}

// Every drop expands to these files; each is optimized at once.
inline ProcessingServices fakeServices(Files expanded)
{
    ProcessingServices services;
    services.optimize = [](const auto& file, const auto&, const auto&) {
        auto output = file;
        return ProcessingResult(file, output.replace_extension("webp"), 4'000'000, 900'000, "Saved 77.5%",
                                true);
    };
    services.expand = [expanded = std::move(expanded)](const auto&, const std::stop_token&) {
        return expanded;
    };
    services.requestSaveAccess = [](const auto& folder) { return std::optional(folder); };
    services.activeProcessorCount = 2;
    return services;
}

} // namespace lumora::bench
