// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "exiv2_library.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

TEST(FieldsOfTheMetadataLibrary, ComeBackAsTheyWere)
{
    ensureExiv2Ready();
    const MetadataFields fields{
        {"Exif.Image.Make", Exiv2::asciiString, std::string("Maker\0", 6)},
        {"Exif.Image.Orientation", Exiv2::unsignedShort, std::string("\6\0", 2)},
        {"Exif.Photo.ExposureTime", Exiv2::unsignedRational, std::string("\1\0\0\0\x7D\0\0\0", 8)}};
    Exiv2::ExifData data;
    for (const MetadataField& field : fields)
        addField(data, field);
    MetadataFields back;
    for (const auto& datum : data)
        back.push_back(fieldOf(datum));
    EXPECT_EQ(back, fields);
}

TEST(FieldsOfTheMetadataLibrary, CostOnlyThemselvesWhenTheyAreUnsound)
{
    ensureExiv2Ready();
    Exiv2::ExifData data;
    EXPECT_THROW(addField(data, {"Exif.NoSuchGroup.NoSuchField", 2, "x"}), Exiv2::Error);
    addIfSound(data, {"Exif.NoSuchGroup.NoSuchField", 2, "x"});
    addIfSound(data, {"Exif.Image.Make", Exiv2::asciiString, "Maker"});
    EXPECT_EQ(data.count(), 1);
}

} // namespace
} // namespace lumora
