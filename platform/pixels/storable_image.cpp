// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/storable_image.h"

#include "pixels/color_conversion.h"
#include "pixels/color_profile.h"
#include "pixels/drawing.h"
#include "pixels/row_reader.h"
#include "pixels/stored_form.h"
#include "rgba_pixels.h"

#include <vips/vips.h>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace lumora {
namespace {

// 72 dots an inch, the customary word for "unknown".
constexpr double dotsPerMillimetre = 72 / 25.4;

struct Bitmap
{
    std::vector<std::uint8_t> rgba; // straight
    std::size_t pixels;
    bool isOpaque = true;
    bool isGray = true;
};

void examine(Bitmap& bitmap)
{
    const std::uint8_t* p = bitmap.rgba.data();
    for (std::size_t i = 0; i < bitmap.pixels && (bitmap.isOpaque || bitmap.isGray); ++i, p += 4) {
        bitmap.isOpaque = bitmap.isOpaque && p[3] == 255;
        bitmap.isGray = bitmap.isGray && p[0] == p[1] && p[1] == p[2];
    }
}

void layOverWhite(Bitmap& bitmap)
{
    std::uint8_t* p = bitmap.rgba.data(); // premultiplied here
    for (std::size_t i = 0; i < bitmap.pixels; ++i, p += 4) {
        const int white = 255 - p[3];
        for (int c = 0; c < 3; ++c)
            p[c] = static_cast<std::uint8_t>(std::min(255, p[c] + white));
        p[3] = 255;
    }
}

std::vector<std::uint8_t> packed(const Bitmap& bitmap, int bands)
{
    const bool isGray = bands <= 2;
    const bool hasAlpha = bands == 2 || bands == 4;
    std::vector<std::uint8_t> bytes(bitmap.pixels * static_cast<std::size_t>(bands));
    const std::uint8_t* from = bitmap.rgba.data();
    std::uint8_t* to = bytes.data();
    for (std::size_t i = 0; i < bitmap.pixels; ++i, from += 4) {
        for (int c = 0; c < (isGray ? 1 : 3); ++c)
            *to++ = from[c];
        if (hasAlpha) *to++ = from[3];
    }
    return bytes;
}

// A colour profile of three components does not describe a single gray one.
bool mayBeGray(VipsImage* image)
{
    return !vips_image_get_typeof(image, VIPS_META_ICC_NAME);
}

Result<VipsImagePtr> compactBitmap(const Image& image, bool holdsAlpha)
{
    auto rows = RowReader::open(image);
    if (!rows) return rows.error();
    Bitmap bitmap;
    bitmap.pixels = static_cast<std::size_t>(rows->width()) * static_cast<std::size_t>(rows->height());
    bitmap.rgba.resize(bitmap.pixels * 4);
    if (auto status = rows->read(0, rows->height(), bitmap.rgba.data()); !status) return status.error();
    if (holdsAlpha) {
        unpremultiply(bitmap.rgba.data(), bitmap.pixels, 4);
    } else {
        layOverWhite(bitmap);
    }
    examine(bitmap);

    const bool isGray = bitmap.isGray && mayBeGray(image.pixels());
    const int bands = (isGray ? 1 : 3) + (bitmap.isOpaque ? 0 : 1);
    const std::vector<std::uint8_t> bytes = packed(bitmap, bands);
    const VipsImagePtr plain(vips_image_new_from_memory_copy(bytes.data(), bytes.size(), rows->width(),
                                                             rows->height(), bands, VIPS_FORMAT_UCHAR));
    VipsImage* tagged = nullptr;
    if (!plain || vips_copy(plain.get(), &tagged, "interpretation",
                            isGray ? VIPS_INTERPRETATION_B_W : VIPS_INTERPRETATION_sRGB, "xres",
                            dotsPerMillimetre, "yres", dotsPerMillimetre, nullptr) != 0) {
        return takeVipsError();
    }
    if (const auto profile = attachedProfile(image.pixels()); !profile.empty())
        vips_image_set_blob_copy(tagged, VIPS_META_ICC_NAME, profile.data(), profile.size());
    return VipsImagePtr(tagged);
}

bool holds(const StorageLimits& limits, const VipsImage* image)
{
    if (limits.holdsAnyModel) return true;
    const VipsBandFormat format = vips_image_get_format(image);
    if (format != VIPS_FORMAT_UCHAR && !(limits.holdsSixteenBits && format == VIPS_FORMAT_USHORT))
        return false;
    if (vips_image_hasalpha(const_cast<VipsImage*>(image)) && !limits.holdsAlpha) return false;
    switch (vips_image_guess_interpretation(image)) {
    case VIPS_INTERPRETATION_B_W:
    case VIPS_INTERPRETATION_GREY16:
        return limits.holdsGray;
    case VIPS_INTERPRETATION_sRGB:
    case VIPS_INTERPRETATION_RGB:
    case VIPS_INTERPRETATION_RGB16:
        return true;
    case VIPS_INTERPRETATION_CMYK:
        return limits.holdsInk;
    default:
        return false;
    }
}

// The savers write every metadata field that they find, so all that describe no pixels are taken off.
void dropMetadata(VipsImage* image)
{
    gchar** fields = vips_image_get_fields(image);
    for (gchar** field = fields; *field; ++field) {
        const std::string_view name = *field;
        if (name != VIPS_META_ICC_NAME && !isStoredFormField(name)) vips_image_remove(image, *field);
    }
    g_strfreev(fields);
}

bool holdsProfileOf(const StorageLimits& limits, VipsImage* image)
{
    const auto profile = attachedProfile(image);
    if (profile.empty() || limits.profiles == ProfileStorage::any) return true;
    return limits.profiles == ProfileStorage::rgbOnly && describes(profile, ColorModel::rgb);
}

// In sRGB; tagged so where the picture was tagged and that can be held.
Result<Image> inSrgb(const Image& image, const StorageLimits& limits)
{
    auto bitmap = drawRegardless(image, {image.width(), image.height(), ColorSpace::sRGB});
    if (!bitmap) return bitmap.error();
    const bool isTagged = vips_image_get_typeof(image.pixels(), VIPS_META_ICC_NAME) != 0;
    return isTagged && limits.profiles != ProfileStorage::none ? *bitmap : bitmap->withoutProfile();
}

} // namespace

Result<VipsImagePtr> storableImage(const Image& image, const StorageLimits& limits)
{
    ensureVipsReady();
    const bool holdsProfile = holdsProfileOf(limits, image.pixels());
    if (image.alphaIsPremultiplied() && holdsProfile) return compactBitmap(image, limits.holdsAlpha);
    if (!image.alphaIsPremultiplied() && holdsProfile && holds(limits, image.pixels())) {
        VipsImage* copy = nullptr;
        if (vips_copy(image.pixels(), &copy, "xres", dotsPerMillimetre, "yres", dotsPerMillimetre, nullptr) !=
            0)
            return takeVipsError();
        dropMetadata(copy);
        return VipsImagePtr(copy);
    }
    auto bitmap = inSrgb(image, limits);
    if (!bitmap) return bitmap.error();
    return compactBitmap(*bitmap, limits.holdsAlpha);
}

} // namespace lumora
