// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/batch_memory.h"

#include "history/file_state.h"
#include "model/settings_words.h"

#include <optional>
#include <utility>

namespace lumora {

BatchMemory::BatchMemory(const ProcessingServices& services, const OptimizerSettings& settings)
    : m_history(services.history && services.keepsHistory() ? services.history() : nullptr)
{
    if (m_history) m_batch = m_history->begin(services.origin, settingsWords(settings));
}

void BatchMemory::lendTo(OptimizerServices& services) const
{
    services.isOwnOutput = [history = m_history](const auto& output, const auto& input) {
        return history->isOwnOutput(output, input);
    };
}

std::function<bool(const std::filesystem::path&)>
BatchMemory::whatIsLeftAlone(const OptimizerSettings& settings) const
{
    if (!m_history || !settings.skipOptimized) return nullptr;
    return [history = m_history](const auto& input) { return history->isOptimized(input); };
}

void BatchMemory::add(const ProcessingResult& result, FileTrace trace) const
{
    std::optional<std::filesystem::path> output;
    if (result.outputURL) output = resolvedPlace(*result.outputURL);
    m_history->add(m_batch, {.source = resolvedPlace(result.sourceURL),
                             .output = std::move(output),
                             .originalBytes = result.originalBytes,
                             .outputBytes = result.outputBytes,
                             .isSuccess = result.isSuccess,
                             .message = result.message,
                             .trace = std::move(trace)});
}

} // namespace lumora
