// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/stored_form.h"

#include <vips/vips.h>

#include <unistd.h>

#include <array>

namespace lumora {
namespace {

constexpr const char* paletteField = "palette-bit-depth"; // the image library's own
constexpr const char* grayField = "lumora-gray-bits";

int numberIn(VipsImage* image, const char* field)
{
    int number = 0;
    if (!vips_image_get_typeof(image, field) || vips_image_get_int(image, field, &number) != 0) return 0;
    return number;
}

} // namespace

StoredForm storedForm(VipsImage* image)
{
    if (const int bits = numberIn(image, paletteField); bits > 0) return {true, bits};
    if (const int bits = numberIn(image, grayField); bits > 0) return {false, bits};
    return {false, static_cast<int>(8 * vips_format_sizeof(vips_image_get_format(image)))};
}

bool isStoredFormField(std::string_view field)
{
    return field == paletteField || field == grayField;
}

void noteFormOfPng(VipsImage* image, int descriptor)
{
    constexpr off_t depthPosition = 24; // in the header chunk, then the colour type
    constexpr std::uint8_t gray = 0;
    std::array<std::uint8_t, 2> depthAndType{};
    if (pread(descriptor, depthAndType.data(), depthAndType.size(), depthPosition) == 2 &&
        depthAndType[1] == gray)
        vips_image_set_int(image, grayField, depthAndType[0]);
}

void noteFormOfTiff(VipsImage* image, const ImageProperties& properties)
{
    if (vips_image_get_bands(image) != 1 || vips_image_get_format(image) != VIPS_FORMAT_UCHAR) return;
    const MetadataGroup& tiff = groupOf(properties, PropertyKey::tiff);
    if (tiff.empty()) return;
    int bits = 1; // what the field means when it is absent
    for (const MetadataEntry& entry : tiff) {
        if (entry.key == "Exif.Image.BitsPerSample" && !entry.bytes.empty())
            bits = static_cast<unsigned char>(entry.bytes.front());
    }
    vips_image_set_int(image, grayField, bits);
}

} // namespace lumora
