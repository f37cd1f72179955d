// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "deep_colors.h"

#include "color_library.h"
#include "pixels/vips_library.h"
#include "vips_operation.h"

#include <lcms2.h>
#include <vips/vips.h>

#include <memory>
#include <utility>

namespace lumora {
namespace {

bool isLab(const VipsImage* image)
{
    switch (vips_image_guess_interpretation(image)) {
    case VIPS_INTERPRETATION_LAB:
    case VIPS_INTERPRETATION_LABQ:
    case VIPS_INTERPRETATION_LABS:
        return true;
    default:
        return false;
    }
}

struct Step
{
    VipsImagePtr from;
    OwnedTransform transform;
};

void* rowOf(const VipsRegion* region, const VipsRect& area, int y)
{
    const std::ptrdiff_t down = area.top + y - region->valid.top;
    const std::ptrdiff_t right = area.left - region->valid.left;
    const auto pixel =
        static_cast<std::ptrdiff_t>(vips_format_sizeof(region->im->BandFmt)) * region->im->Bands;
    return region->data + down * region->bpl + right * pixel;
}

int convertArea(VipsRegion* out, void* sequence, void*, void* step, gboolean*)
{
    auto* const in = static_cast<VipsRegion*>(sequence);
    const VipsRect area = out->valid;
    if (vips_region_prepare(in, &area) != 0) return -1;
    for (int y = 0; y < area.height; ++y) {
        cmsDoTransform(static_cast<Step*>(step)->transform.get(), rowOf(in, area, y), rowOf(out, area, y),
                       static_cast<cmsUInt32Number>(area.width));
    }
    return 0;
}

// The colours alone, in the three components of 8 bits that the transform gives.
Result<VipsImagePtr> converted(VipsImagePtr colors, OwnedTransform transform)
{
    VipsImagePtr out(vips_image_new());
    auto step = std::make_unique<Step>(Step{std::move(colors), std::move(transform)});
    VipsImage* const from = step->from.get();
    if (vips_image_pipelinev(out.get(), VIPS_DEMAND_STYLE_THINSTRIP, from, nullptr) != 0)
        return takeVipsError();
    out->Bands = 3;
    out->BandFmt = VIPS_FORMAT_UCHAR;
    out->Coding = VIPS_CODING_NONE;
    out->Type = VIPS_INTERPRETATION_sRGB;
    vips_image_remove(out.get(), VIPS_META_ICC_NAME);
    if (vips_image_generate(out.get(), vips_start_one, convertArea, vips_stop_one, from, step.get()) != 0)
        return takeVipsError();
    g_object_set_data_full(G_OBJECT(out.get()), "lumora-colors", step.release(),
                           [](gpointer owned) { delete static_cast<Step*>(owned); });
    return out;
}

Result<VipsImagePtr> bands(const VipsImagePtr& image, int first, int count)
{
    return applied(image, [=](VipsImage* in, VipsImage** out) {
        return vips_extract_band(in, out, first, "n", count, nullptr);
    });
}

Result<VipsImagePtr> alphaOf(const VipsImagePtr& image, int band)
{
    auto alpha = bands(image, band, 1);
    if (alpha && vips_image_get_format(alpha->get()) == VIPS_FORMAT_FLOAT) {
        alpha = applied(*alpha, [](VipsImage* in, VipsImage** out) {
            return vips_linear1(in, out, 255.0, 0.5, nullptr);
        });
    }
    if (!alpha) return alpha;
    return applied(*alpha, [](VipsImage* in, VipsImage** out) {
        return vips_cast(in, out, VIPS_FORMAT_UCHAR, "shift", vips_image_get_format(in) == VIPS_FORMAT_USHORT,
                         nullptr);
    });
}

struct Components
{
    OwnedTransform transform; // null where nothing is to be done
    int colors = 3;
    bool mayHaveAlpha = true;
};

Components labComponents()
{
    constexpr cmsUInt32Number floatLab = FLOAT_SH(1) | COLORSPACE_SH(PT_Lab) | CHANNELS_SH(3) | BYTES_SH(4);
    const OwnedProfile lab(cmsCreateLab4Profile(nullptr));
    return {srgbTransform(lab.get(), floatLab, TYPE_RGB_8)};
}

// Floating point lies between 0 and 1, but for inks, which the library wants in per cent.
Components deepComponents(ColorModel model, bool isFloat, ProfileBytes profile)
{
    const OwnedProfile source = sourceProfile(profile, model);
    if (!source || isSrgb(source.get(), model)) return {};
    switch (model) {
    case ColorModel::gray:
        return {srgbTransform(source.get(), isFloat ? TYPE_GRAY_FLT : TYPE_GRAY_16, TYPE_RGB_8), 1};
    case ColorModel::rgb:
        return {srgbTransform(source.get(), isFloat ? TYPE_RGB_FLT : TYPE_RGB_16, TYPE_RGB_8)};
    case ColorModel::cmyk:
        break;
    }
    if (isFloat) return {};
    return {srgbTransform(source.get(), TYPE_CMYK_16, TYPE_RGB_8), 4, false};
}

Components componentsOf(const VipsImage* image, ProfileBytes profile)
{
    if (isLab(image)) return labComponents();
    const auto model = colorModelOf(image);
    const VipsBandFormat format = vips_image_get_format(image);
    const bool isDeep = format == VIPS_FORMAT_USHORT || format == VIPS_FORMAT_FLOAT;
    if (!model || !isDeep) return {};
    return deepComponents(*model, format == VIPS_FORMAT_FLOAT, profile);
}

Result<VipsImagePtr> inSrgb(const VipsImagePtr& image, Components components)
{
    const int count = vips_image_get_bands(image.get());
    if (count < components.colors) return Error{"unexpected number of components"};
    auto colors = bands(image, 0, components.colors);
    if (!colors) return colors;
    auto rgb = converted(std::move(*colors), std::move(components.transform));
    if (!rgb || !components.mayHaveAlpha || count == components.colors) return rgb;
    const auto alpha = alphaOf(image, components.colors);
    if (!alpha) return alpha.error();
    return applied(
        *rgb, [&](VipsImage* in, VipsImage** out) { return vips_bandjoin2(in, alpha->get(), out, nullptr); });
}

// Of Lab in floating point, whatever the file had; the picture itself otherwise.
Result<VipsImagePtr> workable(VipsImage* image)
{
    auto known = newReference(image);
    if (!isLab(image)) return known;
    return applied(known, [](VipsImage* in, VipsImage** out) {
        return vips_colourspace(in, out, VIPS_INTERPRETATION_LAB, nullptr);
    });
}

} // namespace

Result<Image> withDeepColorsInSrgb(const Image& image, ProfileBytes profile)
{
    ensureVipsReady();
    Components components = componentsOf(image.pixels(), profile);
    if (!components.transform) return image;
    const auto from = workable(image.pixels());
    if (!from) return from.error();
    auto rgb = inSrgb(*from, std::move(components));
    if (!rgb) return rgb.error();
    return Image(rgb->release(), image.pendingOrientation(), ImageState::pending);
}

} // namespace lumora
