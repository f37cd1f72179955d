// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/output_naming.h"

#include "records/errors.h"
#include "system/paths.h"
#include "types/format.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstdint>
#include <cstdio>

namespace lumora::ImageOptimizer {
namespace {

constexpr std::string_view collisionSuffix = "-optimized";
constexpr std::string_view lastResortExtension = "png";
constexpr std::string_view lastResortType = "public.png";

std::filesystem::path outputFolder(const std::filesystem::path& source, const OptimizerSettings& settings,
                                   const std::filesystem::path& below)
{
    if (settings.destinationMode == DestinationMode::originalLocation) return source.parent_path();
    if (!settings.destinationFolderURL) throw ImageOptimizerError::missingDestinationFolder();
    return below.empty() ? *settings.destinationFolderURL : *settings.destinationFolderURL / below;
}

std::string outputName(const std::filesystem::path& source, const OptimizerSettings& settings)
{
    return settings.filenamePrefix + baseName(source) + settings.filenameSuffix;
}

// FNV-1a, 32 bits (Fowler, Noll, Vo): enough to keep the long names of one folder apart.
std::string digestOf(std::string_view text)
{
    std::uint32_t hash = 2166136261U;
    for (const char c : text)
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    std::array<char, 10> digits{};
    std::snprintf(digits.data(), digits.size(), "~%08x", hash);
    return digits.data();
}

// The start of the text in at most `bytes` bytes, not cut inside a UTF-8 sequence.
std::string_view shortened(std::string_view text, std::size_t bytes)
{
    while (bytes > 0 && (static_cast<unsigned char>(text[bytes]) & 0xC0U) == 0x80U)
        --bytes;
    return text.substr(0, bytes);
}

// Appended and never taking the folder's place, as a name that begins with a slash would by the operator.
std::filesystem::path appended(const std::filesystem::path& folder, const std::string& name)
{
    return (folder / "").native() + name;
}

std::filesystem::path fileIn(const std::filesystem::path& folder, const std::string& name,
                             const std::string& extension)
{
    const std::string tail = "." + extension;
    if (name.size() + tail.size() <= NAME_MAX) return appended(folder, name + tail);
    const std::string digest = digestOf(name);
    const std::size_t reserved = digest.size() + tail.size();
    if (reserved >= NAME_MAX) return appended(folder, name + tail);
    return appended(folder, std::string(shortened(name, NAME_MAX - reserved)) + digest + tail);
}

} // namespace

std::filesystem::path outputURL(const std::filesystem::path& source,
                                const std::optional<std::string>& sourceType,
                                const OptimizerSettings& settings, const std::filesystem::path& below)
{
    std::filesystem::path candidate =
        fileIn(outputFolder(source, settings, below), outputName(source, settings),
               outputExtension(source, sourceType, settings));
    if (standardized(candidate) != standardized(source)) return candidate;
    return outputPathBesideSource(source, sourceType, settings, below);
}

std::filesystem::path outputPathBesideSource(const std::filesystem::path& source,
                                             const std::optional<std::string>& sourceType,
                                             const OptimizerSettings& settings,
                                             const std::filesystem::path& below)
{
    return fileIn(outputFolder(source, settings, below),
                  outputName(source, settings) + std::string(collisionSuffix),
                  outputExtension(source, sourceType, settings));
}

std::filesystem::path numbered(const std::filesystem::path& output, int number)
{
    const std::string tail = " " + std::to_string(number) + output.extension().native();
    const std::string stem = output.stem().native();
    const std::size_t most = tail.size() < NAME_MAX ? NAME_MAX - tail.size() : 0;
    return appended(output.parent_path(),
                    std::string(stem.size() > most ? shortened(stem, most) : stem) + tail);
}

std::string outputExtension(const std::filesystem::path& source, const std::optional<std::string>& sourceType,
                            const OptimizerSettings& settings)
{
    if (const auto fixed = fileExtension(settings.outputFormat)) return std::string(*fixed);
    if (sourceType) {
        if (const Format* format = formatWithIdentifier(*sourceType))
            return std::string(format->preferredExtension);
    }
    const std::string own = pathExtension(source);
    return own.empty() ? std::string(lastResortExtension) : own;
}

std::string outputUTI(const std::optional<std::string>& sourceType, const OptimizerSettings& settings,
                      std::span<const std::string> writable)
{
    const auto fixed = utiIdentifier(settings.outputFormat);
    std::string candidate = fixed ? std::string(*fixed) : sourceType.value_or(std::string(lastResortType));
    if (supportsImageIODestination(candidate, writable)) return candidate;
    throw ImageOptimizerError::unsupportedFormat(std::string(title(settings.outputFormat)));
}

bool supportsImageIODestination(std::string_view identifier, std::span<const std::string> writable)
{
    return std::ranges::find(writable, identifier) != writable.end();
}

} // namespace lumora::ImageOptimizer
