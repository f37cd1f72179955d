// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>

namespace lumora {

// A failure at one of the steps, which callers tell apart.
struct CwebpError
{
    enum class Step {
        drawing,    // `file` is the PPM file
        writingPpm, // `file` is the PPM file
        launching,  // `file` is the encoder
        encoding,   // no `file`
        copying,    // no `file`
    };

    Step step;
    std::filesystem::path file;
    std::string reason; // may be empty
};

} // namespace lumora
