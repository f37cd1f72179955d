// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// An image file opened for reading: its type by content, its properties, and its first picture. Opening reads
// the header only. Safe to use from any thread, one thread at a time.
#pragma once

#include "metadata/metadata.h"
#include "pixels/image.h"
#include "system/result.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace lumora {

// Pictures above this many pixels count as unreadable.
inline constexpr std::int64_t maximumDecodedPixels = 300'000'000;

class ImageSource
{
public:
    // Fails when the file cannot be opened, is of no readable type, or its header is damaged or over the
    // limit.
    static Result<ImageSource> open(const std::filesystem::path& url);

    // As sniffed from the content, never from the name.
    const std::optional<std::string>& typeIdentifier() const { return m_typeIdentifier; }
    // The first picture as stored, not yet decoded.
    Image image() const { return m_image; }
    // How the stored picture must be turned to stand upright.
    Orientation orientation() const { return m_orientation; }
    const ImageProperties& properties() const { return m_properties; }

private:
    ImageSource(std::string typeIdentifier, Image image, Orientation orientation, ImageProperties properties);

    std::optional<std::string> m_typeIdentifier;
    Image m_image;
    Orientation m_orientation;
    ImageProperties m_properties;
};

} // namespace lumora
