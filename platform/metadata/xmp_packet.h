// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// An XMP packet brought to agree with the picture that it will travel with. Any thread.
#pragma once

#include "metadata/picture_facts.h"

#include <string>

namespace lumora {

// What describes data that is no longer in the file is left out: appended videos, further pictures, depth and
// gain maps, previews, the layout of the old pixels, another colour profile, the rest of an overlong packet.
// Dimensions, colour space and orientation are brought up to date where they are given. A packet that needs
// no change keeps its wording; blanks that pad it for editing in place go in any case. Empty when the packet
// cannot be parsed or nothing remains. Throws Exiv2::Error and standard exceptions.
std::string updatedXmpPacket(const std::string& packet, const PictureFacts& facts);

} // namespace lumora
