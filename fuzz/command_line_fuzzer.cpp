// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Any words may be given to the command line: it is a complaint, or settings that a batch can be started
// with.
#include "cli/command_line_parser.h"
#include "fuzz/fuzzing.h"

#include <cmath>
#include <string>
#include <variant>
#include <vector>

namespace {

using lumora::fuzz::require;

// Words end at NUL, as they do in a process.
std::vector<std::string> wordsOf(const std::uint8_t* data, std::size_t size)
{
    std::vector<std::string> words(1);
    for (std::size_t i = 0; i < size; ++i) {
        if (data[i] == 0)
            words.emplace_back();
        else
            words.back() += static_cast<char>(data[i]);
    }
    return words;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto parsed = lumora::cli::parseCommandLine(wordsOf(data, size));
    if (const auto* error = std::get_if<lumora::cli::UsageError>(&parsed)) {
        require(!error->message.empty());
        return 0;
    }
    const auto& line = std::get<lumora::cli::CommandLine>(parsed);
    if (line.action != lumora::cli::Action::optimize) return 0;
    const lumora::OptimizerSettings settings = line.settings();
    require(!line.paths.empty());
    require(std::isfinite(settings.quality) && settings.maximumPixels > 0);
    require(settings.filenamePrefix.find('/') == std::string::npos);
    require(settings.filenameSuffix.find('/') == std::string::npos);
    return 0;
}
