// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/settings_words.h"

#include "system/paths.h"

#include <charconv>
#include <iterator>

namespace lumora {
namespace {

std::string shortest(double number)
{
    char text[32];
    const auto [end, error] = std::to_chars(std::begin(text), std::end(text), number);
    return {text, end};
}

std::string boundWords(const OptimizerSettings& settings)
{
    const std::string bound = "at most " + std::to_string(settings.maximumPixels);
    switch (settings.resizeMode) {
    case ResizeMode::maxWidth:
        return bound + " wide";
    case ResizeMode::maxHeight:
        return bound + " high";
    case ResizeMode::longestEdge:
        return bound + " wide and high";
    case ResizeMode::none:
        break;
    }
    return "not resized";
}

} // namespace

std::string settingsWords(const OptimizerSettings& settings)
{
    std::string words(title(settings.outputFormat));
    const auto add = [&words](bool isSo, const std::string& what) {
        if (isSo) words.append(", ").append(what);
    };
    add(settings.usesLossyCompression(), "quality " + shortest(settings.quality));
    words.append(", ").append(boundWords(settings));
    add(settings.optimizeColorForSharing, "sRGB");
    add(settings.removeColorManagement, "without profile");
    add(settings.removeMetadata, "without metadata");
    add(settings.moveOriginalToTrash, "originals to the Trash");
    // A history is read from other folders than the one that the batch ran in.
    if (settings.destinationMode == DestinationMode::selectedFolder && settings.destinationFolderURL)
        words.append(", to ").append(standardized(*settings.destinationFolderURL).native());
    return words;
}

} // namespace lumora
