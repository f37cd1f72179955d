// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/sample_images.h"

#include "pixels/vips_library.h"

#include <lcms2.h>
#include <vips/vips.h>

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace lumora::test {
namespace {

void check(int status)
{
    if (status != 0) throw std::runtime_error(takeVipsError().description);
}

template <class Operation>
VipsImagePtr applied(const VipsImagePtr& in, Operation operation)
{
    VipsImage* out = nullptr;
    check(operation(in.get(), &out));
    return VipsImagePtr(out);
}

std::string bigEndian(std::uint32_t value)
{
    std::string bytes;
    for (const unsigned shift : {24U, 16U, 8U, 0U})
        bytes += static_cast<char>(value >> shift & 0xFFU);
    return bytes;
}

// CRC-32 as PNG has it (ISO 3309, reflected, polynomial 0xEDB88320).
std::uint32_t crcOf(const std::string& bytes)
{
    std::uint32_t crc = 0xFFFFFFFFU;
    for (const char c : bytes) {
        crc ^= static_cast<unsigned char>(c);
        for (int bit = 0; bit < 8; ++bit)
            crc = crc & 1U ? crc >> 1U ^ 0xEDB88320U : crc >> 1U;
    }
    return ~crc;
}

std::string chunk(const std::string& type, const std::string& data)
{
    return bigEndian(static_cast<std::uint32_t>(data.size())) + type + data + bigEndian(crcOf(type + data));
}

VipsInterpretation interpretationOf(const Pixels& pixels, const SaveOptions& options)
{
    if (options.inkToCmyk) return VIPS_INTERPRETATION_CMYK;
    if (pixels.bands <= 2) return options.sixteenBits ? VIPS_INTERPRETATION_GREY16 : VIPS_INTERPRETATION_B_W;
    return options.sixteenBits ? VIPS_INTERPRETATION_RGB16 : VIPS_INTERPRETATION_sRGB;
}

void attach(VipsImage* image, cmsHPROFILE profile)
{
    cmsUInt32Number size = 0;
    cmsSaveProfileToMem(profile, nullptr, &size);
    std::vector<std::uint8_t> bytes(size);
    cmsSaveProfileToMem(profile, bytes.data(), &size);
    vips_image_set_blob_copy(image, VIPS_META_ICC_NAME, bytes.data(), bytes.size());
    cmsCloseProfile(profile);
}

void attachEmptyProfile(VipsImage* image)
{
    const cmsHPROFILE profile = cmsCreate_sRGBProfile();
    for (const cmsTagSignature tag : {cmsSigRedColorantTag, cmsSigGreenColorantTag, cmsSigBlueColorantTag,
                                      cmsSigRedTRCTag, cmsSigGreenTRCTag, cmsSigBlueTRCTag})
        cmsWriteTag(profile, tag, nullptr);
    attach(image, profile);
}

void attachGrayProfile(VipsImage* image)
{
    const cmsCIExyY white{0.3457, 0.3585, 1.0};
    cmsToneCurve* curve = cmsBuildGamma(nullptr, 2.2);
    const cmsHPROFILE profile = cmsCreateGrayProfile(&white, curve);
    attach(image, profile);
    cmsFreeToneCurve(curve);
}

VipsImagePtr imageOf(const Pixels& pixels, const SaveOptions& options)
{
    const VipsImagePtr memory(vips_image_new_from_memory_copy(pixels.bytes.data(), pixels.bytes.size(),
                                                              pixels.width, pixels.height, pixels.bands,
                                                              VIPS_FORMAT_UCHAR));
    VipsImagePtr image = applied(memory, [&](VipsImage* in, VipsImage** out) {
        return vips_cast(in, out, options.sixteenBits ? VIPS_FORMAT_USHORT : VIPS_FORMAT_UCHAR, "shift", TRUE,
                         nullptr);
    });
    image = applied(image, [&](VipsImage* in, VipsImage** out) {
        return vips_copy(in, out, "interpretation", interpretationOf(pixels, options), nullptr);
    });
    if (options.orientation != 0) vips_image_set_int(image.get(), VIPS_META_ORIENTATION, options.orientation);
    if (options.pageHeight != 0) vips_image_set_int(image.get(), VIPS_META_PAGE_HEIGHT, options.pageHeight);
    if (!options.profile.empty()) {
        VipsBlob* blob = nullptr;
        check(vips_profile_load(options.profile.c_str(), &blob, nullptr));
        std::size_t size = 0;
        const void* data = vips_blob_get(blob, &size);
        vips_image_set_blob_copy(image.get(), VIPS_META_ICC_NAME, data, size);
        vips_area_unref(VIPS_AREA(blob));
    }
    if (options.grayProfile) attachGrayProfile(image.get());
    if (options.emptyProfile) attachEmptyProfile(image.get());
    return image;
}

// Whatever of it the product itself has allowed, and some that it does without.
void allowWhatTestsUse()
{
    ensureHeifReady();
    for (const char* kind : {"Jpeg", "Png", "Tiff", "Webp", "Heif"}) {
        allowOperation(("VipsForeignLoad" + std::string(kind)).c_str());
        allowOperation(("VipsForeignSave" + std::string(kind)).c_str());
    }
    allowOperation("VipsForeignLoadNsgif");
    allowOperation("VipsForeignSaveCgif");
}

VipsImagePtr open(const std::filesystem::path& file)
{
    allowWhatTestsUse();
    VipsImage* image = nullptr;
    const std::string bytes = readBytes(file);
    image = vips_image_new_from_buffer(bytes.data(), bytes.size(), "", nullptr);
    if (!image) throw std::runtime_error(file.string() + ": " + takeVipsError().description);
    const VipsImagePtr lazy(image);
    return VipsImagePtr(vips_image_copy_memory(lazy.get()));
}

} // namespace

std::vector<int> Pixels::at(int x, int y) const
{
    const auto first = bytes.begin() + (static_cast<std::ptrdiff_t>(y) * width + x) * bands;
    return {first, first + bands};
}

Pixels corneredPicture(int width, int height)
{
    constexpr std::array<std::array<int, 3>, 4> corners{
        {{230, 30, 30}, {30, 200, 30}, {30, 30, 220}, {220, 210, 40}}};
    Pixels pixels{width, height, 3, {}};
    pixels.bytes.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const auto& color =
                corners.at(y * 2 < height ? (x * 2 < width ? 0 : 1) : (x * 2 < width ? 3 : 2));
            for (const int component : color) {
                pixels.bytes.push_back(static_cast<std::uint8_t>(component + (x * 7 + y * 5) % 16));
            }
        }
    }
    return pixels;
}

Pixels uniformPicture(int width, int height, std::vector<std::uint8_t> color)
{
    Pixels pixels{width, height, static_cast<int>(color.size()), {}};
    for (int i = 0; i < width * height; ++i)
        pixels.bytes.insert(pixels.bytes.end(), color.begin(), color.end());
    return pixels;
}

void save(const std::filesystem::path& file, const Pixels& pixels, const SaveOptions& options)
{
    allowWhatTestsUse();
    const VipsImagePtr image = imageOf(pixels, options);
    const std::string extension = file.extension().string();
    void* bytes = nullptr;
    std::size_t size = 0;
    if (extension == ".jpg" || extension == ".jpeg" || extension == ".JPG") {
        check(vips_jpegsave_buffer(image.get(), &bytes, &size, "Q", 95, "interlace", options.interlaced,
                                   nullptr));
    } else if (extension == ".png") {
        const int bits = options.bits != 0 ? options.bits : options.sixteenBits ? 16 : 8;
        check(vips_pngsave_buffer(image.get(), &bytes, &size, "interlace", options.interlaced, "palette",
                                  options.palette, "bitdepth", bits, nullptr));
    } else if (extension == ".tif" || extension == ".tiff") {
        check(vips_tiffsave_buffer(image.get(), &bytes, &size, "bitdepth", options.bits, nullptr));
    } else if (extension == ".gif") {
        check(vips_gifsave_buffer(image.get(), &bytes, &size, nullptr));
    } else if (extension == ".webp") {
        check(vips_webpsave_buffer(image.get(), &bytes, &size, "lossless", options.lossy ? FALSE : TRUE,
                                   nullptr));
    } else {
        const auto coding =
            extension == ".avif" ? VIPS_FOREIGN_HEIF_COMPRESSION_AV1 : VIPS_FOREIGN_HEIF_COMPRESSION_HEVC;
        check(vips_heifsave_buffer(image.get(), &bytes, &size, "Q", 90, "compression", coding, nullptr));
    }
    writeText(file, std::string(static_cast<const char*>(bytes), size));
    g_free(bytes);
}

std::string pngClaiming(std::uint32_t width, std::uint32_t height)
{
    const std::string header = bigEndian(width) + bigEndian(height) + std::string("\x08\x02\0\0\0", 5);
    return "\x89PNG\r\n\x1A\n" + chunk("IHDR", header) + chunk("IDAT", "") + chunk("IEND", "");
}

void writeText(const std::filesystem::path& file, const std::string& bytes)
{
    std::ofstream(file, std::ios::binary) << bytes;
}

std::string readBytes(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

Pixels load(const std::filesystem::path& file)
{
    const VipsImagePtr image = open(file);
    const VipsImagePtr narrow = applied(image, [&](VipsImage* in, VipsImage** out) {
        return vips_cast(in, out, VIPS_FORMAT_UCHAR, "shift", vips_image_get_format(in) == VIPS_FORMAT_USHORT,
                         nullptr);
    });
    std::size_t size = 0;
    void* memory = vips_image_write_to_memory(narrow.get(), &size);
    const auto* first = static_cast<const std::uint8_t*>(memory);
    Pixels pixels{vips_image_get_width(narrow.get()), vips_image_get_height(narrow.get()),
                  vips_image_get_bands(narrow.get()), std::vector<std::uint8_t>(first, first + size)};
    g_free(memory);
    return pixels;
}

Stored inspect(const std::filesystem::path& file)
{
    const VipsImagePtr image = open(file);
    return {static_cast<int>(8 * vips_format_sizeof(vips_image_get_format(image.get()))),
            vips_image_get_bands(image.get()), vips_image_get_typeof(image.get(), VIPS_META_ICC_NAME) != 0,
            vips_image_get_orientation(image.get())};
}

} // namespace lumora::test
