// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Where an output goes, what it is called and which type it is. Pure decisions on names: nothing here asks
// the file system, and an output name that some other file has is returned as it is.
#pragma once

#include "records/optimizer_settings.h"

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace lumora::ImageOptimizer {

// {folder}/{prefix}{base}{suffix}.{extension}; with "-optimized" before the dot when that would be the source
// itself (names compared as standardized, links not resolved). A name longer than a directory entry may be is
// cut and gets a digest of the whole, so that two long names stay apart. `sourceType` is the identifier of
// the source's content. `below` is a relative path from a chosen folder to the one that the output goes to.
// Throws missingDestinationFolder.
std::filesystem::path outputURL(const std::filesystem::path& source,
                                const std::optional<std::string>& sourceType,
                                const OptimizerSettings& settings, const std::filesystem::path& below = {});

// The same with the "-optimized" name, for an output that turns out to be the source under another path.
std::filesystem::path outputPathBesideSource(const std::filesystem::path& source,
                                             const std::optional<std::string>& sourceType,
                                             const OptimizerSettings& settings,
                                             const std::filesystem::path& below = {});

// "a 2.jpg" of "a.jpg"; a name that gets too long loses the end of its stem.
std::filesystem::path numbered(const std::filesystem::path& output, int number);

// Without the dot; never empty.
std::string outputExtension(const std::filesystem::path& source, const std::optional<std::string>& sourceType,
                            const OptimizerSettings& settings);

// The type identifier to encode to, one of `writable`. Throws unsupportedFormat with the format's title.
std::string outputUTI(const std::optional<std::string>& sourceType, const OptimizerSettings& settings,
                      std::span<const std::string> writable);

bool supportsImageIODestination(std::string_view identifier, std::span<const std::string> writable);

} // namespace lumora::ImageOptimizer
