// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// An image file being written. Encodes to memory and writes once, so that a failure leaves no partial file of
// its own. Use from one thread.
#pragma once

#include "metadata/metadata.h"
#include "pixels/image.h"
#include "system/result.h"

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace lumora {

class ImageDestination
{
public:
    // The identifiers of the types that can be written here.
    static std::vector<std::string> writableTypeIdentifiers();

    // Fails when the type is not writable or the file's folder cannot take a new file.
    static Result<ImageDestination> create(const std::filesystem::path& url, std::string_view typeIdentifier);

    ImageDestination(ImageDestination&&) noexcept;
    ImageDestination& operator=(ImageDestination&&) noexcept;
    ~ImageDestination();

    // The one picture of the file, decoded (Image::isInMemory). The properties decide which metadata travels
    // along and the quality (lossyCompressionQuality x 100, rounded) where the type is lossy; 0.82 when there
    // is none.
    void addImage(const Image& image, const ImageProperties& properties);

    // Encodes and writes the file. An existing file at the path is replaced.
    Status finalize();

private:
    struct State;
    explicit ImageDestination(std::unique_ptr<State> state);

    std::unique_ptr<State> m_state;
};

} // namespace lumora
