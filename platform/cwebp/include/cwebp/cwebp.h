// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// WebP by the external encoder `cwebp`: the picture goes to it as a temporary binary PPM file and comes back
// as a temporary WebP file. Any thread; several encoders may run at once.
#pragma once

#include "cwebp/cwebp_error.h"
#include "cwebp/ppm_error.h"
#include "system/atomic_file.h"
#include "system/output_file.h"
#include "system/result.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <utility>
#include <vector>

namespace lumora {

// The encoder to run: what LUMORA_CWEBP_PATH names when that is executable, else Contents/MacOS/cwebp of the
// bundle. Looked up anew at each call.
std::optional<std::filesystem::path> findCwebp(const std::filesystem::path& bundle);

// Writes the picture into the file for the encoder, and tells its width and height in pixels.
using PpmMaker = std::function<Result<std::pair<std::int64_t, std::int64_t>, PpmError>(OutputFile& file)>;

// Encodes the file that is to be at the path; it is whole, but still has to be given its name. `options` are
// the encoder's arguments but for the two files, which are put behind them. Blocks its thread until the
// encoder ends, without a time limit; a stop kills it. Leaves no temporary file on any way out; what
// `makePpm` throws passes.
Result<AtomicFile, CwebpError> encodeWithCwebp(const std::filesystem::path& encoder, const PpmMaker& makePpm,
                                               const std::filesystem::path& output,
                                               std::vector<std::string> options, const std::stop_token& stop);

} // namespace lumora
