// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// One batch as the history gets to know it. Any thread.
#pragma once

#include "history/history.h"
#include "model/processing_services.h"
#include "records/file_trace.h"
#include "records/optimizer_settings.h"
#include "records/processing_result.h"

#include <filesystem>
#include <functional>
#include <memory>

namespace lumora {

class BatchMemory
{
public:
    // Remembers nothing.
    BatchMemory() = default;
    BatchMemory(const ProcessingServices& services, const OptimizerSettings& settings);

    explicit operator bool() const { return m_history != nullptr; }
    // What it knows of earlier batches.
    void lendTo(OptimizerServices& services) const;
    // Null where nothing is.
    std::function<bool(const std::filesystem::path&)>
    whatIsLeftAlone(const OptimizerSettings& settings) const;
    void add(const ProcessingResult& result, FileTrace trace) const;

private:
    std::shared_ptr<History> m_history;
    History::Batch m_batch;
};

} // namespace lumora
