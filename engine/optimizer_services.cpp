// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/optimizer_services.h"

#include "system/trash.h"

namespace lumora {

OptimizerServices OptimizerServices::system()
{
    return {
        .confirmOverwrite = [](const std::filesystem::path&) { return false; },
        .moveToTrash = [](const std::filesystem::path& path) { return lumora::moveToTrash(path); },
        .stop = {},
        .waitsForDisk = nullptr,
        .disk = std::make_shared<DiskSync>(),
        .names = std::make_shared<ImageOptimizer::BatchNames>(),
        .outputs = nullptr,
        .pixels = nullptr,
        .memory = nullptr,
        .keepInTrash = {},
        .isOwnOutput = {},
        .trace = nullptr,
    };
}

} // namespace lumora
