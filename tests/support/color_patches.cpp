// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/color_patches.h"

#include "pixels/vips_library.h"
#include "tests/support/sample_images.h"

#include <lcms2.h>
#include <libdeflate.h>
#include <vips/vips.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <stdexcept>

namespace lumora::test {
namespace {

using Owned = std::unique_ptr<void, cmsBool (*)(cmsHPROFILE)>;
using Curve = std::unique_ptr<cmsToneCurve, void (*)(cmsToneCurve*)>;

constexpr cmsCIExyY daylight{0.3127, 0.3290, 1};

void check(int status)
{
    if (status != 0) throw std::runtime_error(takeVipsError().description);
}

Curve curveOf(double exponent)
{
    constexpr std::array<double, 5> srgb{2.4, 1 / 1.055, 0.055 / 1.055, 1 / 12.92, 0.04045};
    return {exponent > 0 ? cmsBuildGamma(nullptr, exponent)
                         : cmsBuildParametricToneCurve(nullptr, 4, srgb.data()),
            cmsFreeToneCurve};
}

Profile saved(cmsHPROFILE profile)
{
    cmsUInt32Number size = 0;
    cmsSaveProfileToMem(profile, nullptr, &size);
    Profile bytes(size);
    cmsSaveProfileToMem(profile, bytes.data(), &size);
    cmsCloseProfile(profile);
    return bytes;
}

// Inks that darken evenly, each by its own colour.
int labOfInks(const cmsUInt16Number inks[], cmsUInt16Number lab[], void*)
{
    constexpr double full = 65535;
    const double cyan = inks[0] / full;
    const double magenta = inks[1] / full;
    const double yellow = inks[2] / full;
    const double paper = 1 - inks[3] / full;
    const auto encoded = [](double value) { return static_cast<cmsUInt16Number>(std::lround(full * value)); };
    lab[0] = encoded((0.1 + 0.9 * paper) * (1 - 0.3 * cyan) * (1 - 0.4 * magenta) * (1 - 0.1 * yellow));
    lab[1] = encoded((128 + (50 * magenta - 20 * cyan) * paper) / 255);
    lab[2] = encoded((128 + (60 * yellow - 30 * cyan) * paper) / 255);
    return 1;
}

int colorsOf(Model model)
{
    return model == Model::gray ? 1 : model == Model::cmyk ? 4 : 3;
}

VipsInterpretation interpretationOf(const PatchFile& patches)
{
    switch (patches.model) {
    case Model::gray:
        return patches.bits == 16 ? VIPS_INTERPRETATION_GREY16 : VIPS_INTERPRETATION_B_W;
    case Model::cmyk:
        return VIPS_INTERPRETATION_CMYK;
    case Model::lab:
        return VIPS_INTERPRETATION_LAB;
    case Model::rgb:
        break;
    }
    return patches.bits == 16 ? VIPS_INTERPRETATION_RGB16 : VIPS_INTERPRETATION_sRGB;
}

VipsBandFormat formatOf(const PatchFile& patches)
{
    if (patches.model == Model::lab) return VIPS_FORMAT_FLOAT;
    return patches.bits == 16 ? VIPS_FORMAT_USHORT : VIPS_FORMAT_UCHAR;
}

VipsImagePtr floatPicture(const PatchFile& patches)
{
    const std::size_t bands = patches.colors.front().size();
    const double largest = patches.model == Model::lab ? 1 : std::pow(2, patches.bits) - 1;
    const auto width = static_cast<int>(patches.colors.size()) * patchSize;
    std::vector<float> values;
    for (int i = 0; i < width * patchSize; ++i) {
        for (const double value : patches.colors[static_cast<std::size_t>(i % width / patchSize)])
            values.push_back(
                static_cast<float>(patches.model == Model::lab ? value : std::round(value * largest)));
    }
    return VipsImagePtr(vips_image_new_from_memory_copy(values.data(), values.size() * sizeof(float), width,
                                                        patchSize, static_cast<int>(bands),
                                                        VIPS_FORMAT_FLOAT));
}

VipsImagePtr pictureOf(const PatchFile& patches)
{
    const VipsImagePtr values = floatPicture(patches);
    VipsImage* out = nullptr;
    check(vips_cast(values.get(), &out, formatOf(patches), nullptr));
    const VipsImagePtr cast(out);
    check(vips_copy(cast.get(), &out, "interpretation", interpretationOf(patches), nullptr));
    VipsImagePtr picture(out);
    if (patches.model == Model::lab) {
        check(vips_colourspace(picture.get(), &out,
                               patches.bits == 16 ? VIPS_INTERPRETATION_LABS : VIPS_INTERPRETATION_LABQ,
                               nullptr));
        picture.reset(out);
    }
    if (!patches.profile.empty())
        vips_image_set_blob_copy(picture.get(), VIPS_META_ICC_NAME, patches.profile.data(),
                                 patches.profile.size());
    return picture;
}

void quantize(PatchFile& patches)
{
    if (patches.model == Model::lab) return;
    const double largest = std::pow(2, patches.bits) - 1;
    for (Color& color : patches.colors) {
        for (double& value : color)
            value = std::round(value * largest) / largest;
    }
}

Model modelOf(const VipsImage* image)
{
    switch (vips_image_guess_interpretation(image)) {
    case VIPS_INTERPRETATION_B_W:
    case VIPS_INTERPRETATION_GREY16:
        return Model::gray;
    case VIPS_INTERPRETATION_CMYK:
        return Model::cmyk;
    case VIPS_INTERPRETATION_LAB:
    case VIPS_INTERPRETATION_LABQ:
    case VIPS_INTERPRETATION_LABS:
        return Model::lab;
    default:
        return Model::rgb;
    }
}

Color colorAt(VipsImage* image, double x, double y, double unit)
{
    double* values = nullptr;
    int count = 0;
    check(vips_getpoint(image, &values, &count, static_cast<int>(x), static_cast<int>(y), nullptr));
    Color color(values, values + count);
    g_free(values);
    for (double& value : color)
        value /= unit;
    return color;
}

cmsUInt32Number typeOf(Model model)
{
    switch (model) {
    case Model::gray:
        return TYPE_GRAY_DBL;
    case Model::rgb:
        return TYPE_RGB_DBL;
    case Model::cmyk:
        return TYPE_CMYK_DBL;
    case Model::lab:
        break;
    }
    return TYPE_Lab_DBL;
}

cmsColorSpaceSignature spaceOf(Model model)
{
    return model == Model::gray ? cmsSigGrayData : model == Model::cmyk ? cmsSigCmykData : cmsSigRgbData;
}

Owned opened(const Profile& bytes)
{
    return {cmsOpenProfileFromMem(bytes.data(), static_cast<cmsUInt32Number>(bytes.size())), cmsCloseProfile};
}

Owned profileOf(const PatchFile& patches)
{
    if (patches.model == Model::lab) return {cmsCreateLab4Profile(nullptr), cmsCloseProfile};
    if (!patches.profile.empty() && isDescribed(patches)) return opened(patches.profile);
    if (patches.model == Model::cmyk) return opened(libraryProfile("cmyk"));
    if (patches.model == Model::gray) return opened(grayProfile(0));
    return {cmsCreate_sRGBProfile(), cmsCloseProfile};
}

} // namespace

Profile grayProfile(double exponent)
{
    return saved(cmsCreateGrayProfile(&daylight, curveOf(exponent).get()));
}

Profile rgbProfile(double redX, double redY, double greenX, double greenY, double blueX, double blueY,
                   double exponent)
{
    const Curve curve = curveOf(exponent);
    const std::array<cmsToneCurve*, 3> curves{curve.get(), curve.get(), curve.get()};
    const cmsCIExyYTRIPLE primaries{{redX, redY, 1}, {greenX, greenY, 1}, {blueX, blueY, 1}};
    return saved(cmsCreateRGBProfile(&daylight, &primaries, curves.data()));
}

Profile inkProfile()
{
    const cmsHPROFILE profile = cmsCreateProfilePlaceholder(nullptr);
    cmsSetDeviceClass(profile, cmsSigOutputClass);
    cmsSetColorSpace(profile, cmsSigCmykData);
    cmsSetPCS(profile, cmsSigLabData);
    cmsPipeline* const pipeline = cmsPipelineAlloc(nullptr, 4, 3);
    cmsStage* const grid = cmsStageAllocCLut16bit(nullptr, 9, 4, 3, nullptr);
    cmsStageSampleCLut16bit(grid, labOfInks, nullptr, 0);
    cmsPipelineInsertStage(pipeline, cmsAT_END, grid);
    cmsWriteTag(profile, cmsSigAToB0Tag, pipeline);
    cmsWriteTag(profile, cmsSigAToB1Tag, pipeline);
    cmsPipelineFree(pipeline);
    return saved(profile);
}

Profile libraryProfile(const char* name)
{
    ensureVipsReady();
    VipsBlob* blob = nullptr;
    check(vips_profile_load(name, &blob, nullptr));
    std::size_t size = 0;
    const auto* bytes = static_cast<const std::uint8_t*>(vips_blob_get(blob, &size));
    Profile profile(bytes, bytes + size);
    vips_area_unref(VIPS_AREA(blob));
    return profile;
}

void savePatches(const std::filesystem::path& file, PatchFile& patches)
{
    ensureVipsReady();
    quantize(patches);
    const VipsImagePtr picture = pictureOf(patches);
    const std::string extension = file.extension();
    const char* const saver = extension == ".png"   ? "VipsForeignSavePng"
                              : extension == ".tif" ? "VipsForeignSaveTiff"
                                                    : "VipsForeignSaveJpeg";
    allowOperation(saver);
    void* bytes = nullptr;
    std::size_t size = 0;
    if (extension == ".png") {
        check(vips_pngsave_buffer(picture.get(), &bytes, &size, "bitdepth", patches.bits, nullptr));
    } else if (extension == ".tif") {
        check(
            vips_tiffsave_buffer(picture.get(), &bytes, &size, "premultiply", patches.isAssociated, nullptr));
    } else {
        check(vips_jpegsave_buffer(picture.get(), &bytes, &size, "Q", 100, "subsample_mode",
                                   VIPS_FOREIGN_SUBSAMPLE_OFF, nullptr));
    }
    writeText(file, std::string(static_cast<const char*>(bytes), size));
    g_free(bytes);
}

PatchFile loadPatches(const std::filesystem::path& file, double scale)
{
    static_cast<void>(inspect(file)); // lets the image library read it
    const std::string bytes = readBytes(file);
    const VipsImagePtr stored(vips_image_new_from_buffer(bytes.data(), bytes.size(), "", nullptr));
    if (!stored) throw std::runtime_error(takeVipsError().description);
    PatchFile patches;
    patches.model = modelOf(stored.get());
    VipsImage* out = nullptr;
    if (patches.model == Model::lab) {
        check(vips_colourspace(stored.get(), &out, VIPS_INTERPRETATION_LAB, nullptr));
    } else {
        check(vips_copy(stored.get(), &out, nullptr));
    }
    const VipsImagePtr image(out);
    patches.bits = static_cast<int>(8 * vips_format_sizeof(vips_image_get_format(image.get())));
    patches.hasAlpha = vips_image_get_bands(image.get()) > colorsOf(patches.model);
    const std::string_view profile = blobOf(image.get(), VIPS_META_ICC_NAME);
    patches.profile.assign(profile.begin(), profile.end());
    const double unit = patches.model == Model::lab ? 1 : std::pow(2, patches.bits) - 1;
    const double size = patchSize * scale;
    const auto count = std::lround(vips_image_get_width(image.get()) / size);
    for (long i = 0; i < count; ++i)
        patches.colors.push_back(colorAt(image.get(), (static_cast<double>(i) + 0.5) * size, size / 2, unit));
    return patches;
}

Colors inSrgb(const PatchFile& patches)
{
    constexpr double percent = 100; // the library's scale of inks
    const Owned from = profileOf(patches);
    const Owned srgb(cmsCreate_sRGBProfile(), cmsCloseProfile);
    const std::unique_ptr<void, void (*)(cmsHTRANSFORM)> transform(
        cmsCreateTransform(from.get(), typeOf(patches.model), srgb.get(), TYPE_RGB_DBL,
                           INTENT_RELATIVE_COLORIMETRIC, cmsFLAGS_BLACKPOINTCOMPENSATION),
        cmsDeleteTransform);
    if (!transform) throw std::runtime_error("no transform");
    const auto count = static_cast<std::size_t>(colorsOf(patches.model));
    Colors converted;
    for (Color color : patches.colors) {
        const double alpha = color.size() > count ? color.at(count) : 1;
        for (double& value : color)
            value *= patches.model == Model::cmyk ? percent : 1;
        Color rgb(3);
        cmsDoTransform(transform.get(), color.data(), rgb.data(), 1);
        rgb.push_back(alpha);
        for (double& value : rgb)
            value = 255 * std::clamp(value, 0.0, 1.0);
        converted.push_back(rgb);
    }
    return converted;
}

bool isDescribed(const PatchFile& patches)
{
    if (patches.profile.empty()) return true;
    const Owned own = opened(patches.profile);
    return own && cmsGetColorSpace(own.get()) == spaceOf(patches.model);
}

void insertChunk(const std::filesystem::path& png, const std::string& type, const std::string& data)
{
    constexpr std::size_t afterHeader = 33;
    const auto length = static_cast<std::uint32_t>(data.size());
    const std::uint32_t checksum = libdeflate_crc32(0, (type + data).data(), type.size() + data.size());
    std::string bytes = readBytes(png);
    bytes.insert(afterHeader, bigEndianNumbers({length}) + type + data + bigEndianNumbers({checksum}));
    writeText(png, bytes);
}

std::string bigEndianNumbers(const std::vector<std::uint32_t>& numbers)
{
    std::string bytes;
    for (const std::uint32_t number : numbers) {
        for (const unsigned shift : {24U, 16U, 8U, 0U})
            bytes += static_cast<char>(number >> shift & 0xFFU);
    }
    return bytes;
}

} // namespace lumora::test
