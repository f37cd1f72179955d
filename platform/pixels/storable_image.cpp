// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/storable_image.h"

#include "compact_rows.h"
#include "pixels/color_conversion.h"
#include "pixels/color_profile.h"
#include "pixels/drawing.h"
#include "pixels/row_stream.h"
#include "pixels/stored_form.h"
#include "vips_operation.h"

#include <vips/vips.h>

#include <memory>

namespace lumora {
namespace {

// 72 dots an inch, the customary word for "unknown".
constexpr double dotsPerMillimetre = 72 / 25.4;

// A colour profile of three components does not describe a single gray one.
bool mayBeGray(VipsImage* image)
{
    return !vips_image_get_typeof(image, VIPS_META_ICC_NAME);
}

Result<VipsImagePtr> compactBitmap(const Image& image, bool holdsAlpha)
{
    auto compact = CompactRows::open(image.pixels(), holdsAlpha, mayBeGray(image.pixels()));
    if (!compact) return compact.error();
    const StreamForm form = (*compact)->form();
    const auto outcome = image.outcome() ? image.outcome() : std::make_shared<ReadOutcome>();
    auto rows = streamedPicture(image.pixels(), form, std::move(*compact), outcome);
    if (!rows) return rows.error();
    (*rows)->Xres = (*rows)->Yres = dotsPerMillimetre;
    if (const auto profile = attachedProfile(image.pixels()); !profile.empty())
        vips_image_set_blob_copy(rows->get(), VIPS_META_ICC_NAME, profile.data(), profile.size());
    return rows;
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
        if (!isComponentField(*field)) vips_image_remove(image, *field);
    }
    g_strfreev(fields);
}

// Grey pictures under a profile of three components are not rare, and readers of PNG refuse them.
void dropForeignProfile(VipsImage* image)
{
    const auto model = colorModelOf(image);
    if (model && !describes(attachedProfile(image), *model)) vips_image_remove(image, VIPS_META_ICC_NAME);
}

bool holdsProfileOf(const StorageLimits& limits, VipsImage* image)
{
    const auto profile = attachedProfile(image);
    if (profile.empty() || limits.profiles == ProfileStorage::any) return true;
    return limits.profiles == ProfileStorage::rgbOnly && describes(profile, ColorModel::rgb);
}

// Under its own profile where that can be held and 8 bits suffice, else in sRGB; tagged so where the picture
// was tagged.
Result<Image> redrawn(const Image& image, const StorageLimits& limits)
{
    const auto profile = attachedProfile(image.pixels());
    const bool keepsColors = limits.profiles != ProfileStorage::none && describes(profile, ColorModel::rgb) &&
                             colorModelOf(image.pixels()) == ColorModel::rgb && !countsLight(profile);
    const auto space = keepsColors ? ColorSpace::own : ColorSpace::sRGB;
    auto bitmap = drawRegardless(image, {image.width(), image.height(), space});
    if (!bitmap) return bitmap.error();
    const bool isTagged = vips_image_get_typeof(image.pixels(), VIPS_META_ICC_NAME) != 0;
    return isTagged && limits.profiles != ProfileStorage::none ? *bitmap : bitmap->withoutProfile();
}

// Floating point from 0 to 1 in the most bits that most types know.
Result<VipsImagePtr> inSixteenBits(const VipsImagePtr& image)
{
    constexpr double white = 65535;
    const auto interpretation = colorModelOf(image.get()) == ColorModel::gray ? VIPS_INTERPRETATION_GREY16
                                                                              : VIPS_INTERPRETATION_RGB16;
    auto scaled = applied(
        image, [](VipsImage* in, VipsImage** out) { return vips_linear1(in, out, white, 0.5, nullptr); });
    if (!scaled) return scaled;
    auto whole = applied(*scaled, [](VipsImage* in, VipsImage** out) {
        return vips_cast(in, out, VIPS_FORMAT_USHORT, nullptr);
    });
    if (!whole) return whole;
    return applied(*whole, [=](VipsImage* in, VipsImage** out) {
        return vips_copy(in, out, "interpretation", interpretation, nullptr);
    });
}

// What is stored in 16 bits though it came in more.
bool isTooDeep(const Image& image, const StorageLimits& limits)
{
    const auto model = colorModelOf(image.pixels());
    return vips_image_get_format(image.pixels()) == VIPS_FORMAT_FLOAT && !limits.holdsAnyModel &&
           limits.holdsSixteenBits && (model == ColorModel::gray || model == ColorModel::rgb);
}

} // namespace

Result<VipsImagePtr> storableImage(const Image& image, const StorageLimits& limits)
{
    ensureVipsReady();
    if (isTooDeep(image, limits)) {
        auto sixteen = inSixteenBits(newReference(image.pixels()));
        if (!sixteen) return sixteen;
        return storableImage(
            Image(sixteen->release(), image.pendingOrientation(), image.state()).withOutcome(image.outcome()),
            limits);
    }
    const bool holdsProfile = holdsProfileOf(limits, image.pixels());
    if (image.alphaIsPremultiplied() && holdsProfile) return compactBitmap(image, limits.holdsAlpha);
    if (!image.alphaIsPremultiplied() && holdsProfile && holds(limits, image.pixels())) {
        VipsImage* copy = nullptr;
        if (vips_copy(image.pixels(), &copy, "xres", dotsPerMillimetre, "yres", dotsPerMillimetre, nullptr) !=
            0)
            return takeVipsError();
        dropMetadata(copy);
        dropForeignProfile(copy);
        return VipsImagePtr(copy);
    }
    auto bitmap = redrawn(image, limits);
    if (!bitmap) return bitmap.error();
    return compactBitmap(*bitmap, limits.holdsAlpha);
}

} // namespace lumora
