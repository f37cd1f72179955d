// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// An image file opened for reading: its type by content, its metadata, and its first picture. The file is
// opened once, and everything is read through that descriptor: whatever the name leads to meanwhile, pixels
// and metadata are of one file. Opening reads the header only. Safe to use from any thread, one thread at a
// time.
#pragma once

#include "formats/source_facts.h"
#include "metadata/metadata.h"
#include "pixels/image.h"
#include "system/file_descriptor.h"
#include "system/result.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace lumora {

class ImageSource
{
public:
    // Fails when the file cannot be opened, is of no readable type, or its header is damaged or over the
    // limit.
    static Result<ImageSource> open(const std::filesystem::path& path);
    // The same for a file that is open for reading; its position does not matter.
    static Result<ImageSource> open(FileDescriptor file);

    // As sniffed from the content, never from the name.
    const std::optional<std::string>& typeIdentifier() const { return m_typeIdentifier; }
    // The first picture as stored, not yet decoded.
    Image image() const { return m_image; }
    // How the stored picture must be turned to stand upright.
    Orientation orientation() const { return m_orientation; }
    const Metadata& metadata() const { return m_metadata; }
    const SourceFacts& facts() const { return m_facts; }
    // About how many bytes decoding takes besides a few rows.
    std::int64_t heldBytes() const { return m_heldBytes; }

private:
    ImageSource(std::string typeIdentifier, Image image, Orientation orientation, Metadata metadata,
                SourceFacts facts, std::int64_t heldBytes);

    std::optional<std::string> m_typeIdentifier;
    Image m_image;
    Orientation m_orientation;
    Metadata m_metadata;
    SourceFacts m_facts;
    std::int64_t m_heldBytes;
};

} // namespace lumora
