// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The remarks, the XMP packet and the colour profile in a GIF file, which the image library neither reads nor
// writes. Any thread.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace lumora {

// The raw bytes of each remark, up to where the file stops being a sound GIF.
std::vector<std::string> gifComments(std::span<const std::byte> gif);

// The raw bytes of the colour profile that some programs put there; empty without one.
std::string gifProfile(std::span<const std::byte> gif);

// The XMP packet; empty without one.
std::string gifXmp(std::span<const std::byte> gif);

// The file with the remarks and the packet before its first picture; as it is when it is not a sound GIF.
std::vector<std::byte> withGifMetadata(std::vector<std::byte> gif, const std::vector<std::string>& comments,
                                       const std::string& xmp = {});

} // namespace lumora
