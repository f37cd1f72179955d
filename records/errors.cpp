// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "records/errors.h"

#include <utility>

namespace lumora {
namespace {

std::string nameOf(const std::filesystem::path& file)
{
    return file.filename().string();
}

} // namespace

ImageOptimizerError::ImageOptimizerError(Kind kind, std::string description)
    : m_kind(kind), m_description(std::move(description))
{
}

ImageOptimizerError ImageOptimizerError::unsupportedFormat(std::string format)
{
    return {Kind::unsupportedFormat,
            std::move(format) + " is not supported by this macOS ImageIO installation."};
}

ImageOptimizerError ImageOptimizerError::cannotCreateDestination(std::filesystem::path output)
{
    return {Kind::cannotCreateDestination, "Could not create " + nameOf(output) + "."};
}

ImageOptimizerError ImageOptimizerError::cannotFinalize(std::filesystem::path output,
                                                        std::optional<std::string> reason)
{
    const std::string sentence = "Could not finish writing " + nameOf(output);
    return {Kind::cannotFinalize, reason && !reason->empty() ? sentence + ": " + *reason : sentence + "."};
}

ImageOptimizerError ImageOptimizerError::cannotWriteOutput(std::filesystem::path output, std::string reason)
{
    return {Kind::cannotWriteOutput, "Could not save " + nameOf(output) + ": " + reason};
}

ImageOptimizerError ImageOptimizerError::unreadableImage()
{
    return {Kind::unreadableImage, "The image could not be read."};
}

ImageOptimizerError ImageOptimizerError::overwriteDeclined()
{
    return {Kind::overwriteDeclined, "Skipped because the output file already exists."};
}

ImageOptimizerError ImageOptimizerError::missingDestinationFolder()
{
    return {Kind::missingDestinationFolder, "The selected destination folder is no longer available."};
}

LeftAlone LeftAlone::alreadyOptimized()
{
    return LeftAlone("Already optimized.");
}

LeftAlone LeftAlone::notSmaller()
{
    return LeftAlone("Kept: the output would not be smaller.");
}

PlatformError PlatformError::notEnoughMemory()
{
    return PlatformError("There is not enough memory for this image.");
}

} // namespace lumora
