// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What the fuzzers share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>

// Called by libFuzzer with each input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace lumora::fuzz {

// Larger pictures only cost time and memory: a few bytes can claim 300 megapixels.
inline constexpr std::int64_t maximumPixels = 1'000'000;

// A broken promise of the code under test is a finding.
inline void require(bool promise)
{
    if (!promise) std::abort();
}

} // namespace lumora::fuzz
