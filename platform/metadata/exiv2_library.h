// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The metadata library's start-up and the way between its values and MetadataField.
#pragma once

#include "metadata/metadata.h"

#include <exiv2/exiv2.hpp>

#include <string>
#include <string_view>

namespace lumora {

// Starts the XMP toolkit once, with a lock, because files are handled on several threads; silences the log.
void ensureExiv2Ready();

MetadataField fieldOf(const Exiv2::Exifdatum& datum);
MetadataField fieldOf(const Exiv2::Iptcdatum& datum);
// Throws Exiv2::Error for an unknown key.
void addField(Exiv2::ExifData& data, const MetadataField& field);
void addField(Exiv2::IptcData& data, const MetadataField& field);

// A field that cannot be written costs only itself.
template <class Data>
void addIfSound(Data& data, const MetadataField& field)
{
    try {
        addField(data, field);
    } catch (const Exiv2::Error&) {
    }
}

inline const Exiv2::byte* bytesOf(std::string_view text)
{
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): characters as bytes
    return reinterpret_cast<const Exiv2::byte*>(text.data());
}
inline std::string textOf(const Exiv2::DataBuf& buffer)
{
    return {buffer.pData_, buffer.pData_ + buffer.size_};
}

} // namespace lumora
