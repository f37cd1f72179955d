// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The picture of one file on its way to an encoder, and the memory that was set aside for it. Its rows are
// decoded, turned, reduced and recoloured as the encoder takes them, so that nothing of its size is held
// unless the output needs it. One thread.
#pragma once

#include "engine/memory_budget.h"
#include "engine/optimizer_services.h"
#include "formats/image_source.h"
#include "pixels/image.h"
#include "records/optimizer_settings.h"

#include <cstdint>
#include <filesystem>
#include <optional>

namespace lumora::ImageOptimizer {

// What one file needs at every stage.
struct Job
{
    const std::filesystem::path& input;
    const OptimizerSettings& settings;
    const OptimizerServices& services;
};

class OpenedPicture
{
public:
    // Waits until there is memory for it. Throws unreadableImage when the file's beginning is damaged
    // already, and PlatformError when there is not enough memory or the job is stopped.
    explicit OpenedPicture(const Job& job);

    // Until close().
    const ImageSource& source() const { return *m_source; }
    // As the output is to show it. Its rows can be had once.
    const Image& image() const { return *m_image; }

    // Throws as the constructor when the file is damaged anywhere. A small picture is kept in memory, a large
    // one closed.
    void proveReadable();
    // Gives up everything, before something that may take long.
    void close();
    // Keeps the memory for what is to be done next with the output.
    void closeButShare();
    // After proveReadable().
    void openAgain();

    // After a failure of whoever took the rows: throws what the input is to blame for, if it is.
    void blameInput();

private:
    const Job& m_job;
    std::optional<ImageSource> m_source;
    MemoryBudget::Share m_share;
    std::int64_t m_need = 0;
    std::optional<Image> m_image;

    void open();
};

} // namespace lumora::ImageOptimizer
