// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Optimizes one image file from its path to its result. Stateless; several calls may run at once on different
// files. Blocks its thread for as long as the file takes.
#pragma once

#include "engine/optimizer_services.h"
#include "records/optimizer_settings.h"
#include "records/processing_result.h"

#include <filesystem>

namespace lumora::ImageOptimizer {

// Returns a result with isSuccess true, or throws: an ImageOptimizerError, or a PlatformError whose text
// passes through. Never returns a failed result; what() of the exception is the text of the failed row.
ProcessingResult optimize(const std::filesystem::path& input, const OptimizerSettings& settings,
                          const OptimizerServices& services);

} // namespace lumora::ImageOptimizer
