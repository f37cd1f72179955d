// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// One container, three names for what the pictures in it are coded with.
#include "format_io.h"
#include "heif/heic_encoder.h"
#include "heif/heif_file.h"
#include "heif/heif_items.h"
#include "heif/hevc_threads.h"
#include "pixels/color_profile.h"
#include "pixels/described_colors.h"
#include "vips_loading.h"

#include <algorithm>
#include <array>
#include <string>

namespace lumora {
namespace {

using namespace std::string_view_literals;

// Whether the first box of an ISO media file names one of these brands.
bool hasBrand(std::string_view head, std::span<const std::string_view> brands)
{
    if (head.size() < 16 || !head.starts_with("\0\0"sv) || head.substr(4, 4) != "ftyp"sv) return false;
    const auto boxLength = static_cast<std::size_t>((static_cast<unsigned char>(head[2]) << 8U) +
                                                    static_cast<unsigned char>(head[3]));
    const std::string_view box = head.substr(0, std::min(boxLength, head.size()));
    for (std::size_t at = 8; at + 4 <= box.size(); at += 4) {
        const bool isMinorVersion = at == 12;
        if (!isMinorVersion && std::ranges::find(brands, box.substr(at, 4)) != brands.end()) return true;
    }
    return false;
}

bool beginsAvif(std::string_view head)
{
    return hasBrand(head, std::array{"avif"sv, "avis"sv});
}

bool beginsHeic(std::string_view head)
{
    return hasBrand(head, std::array{"heic"sv, "heix"sv, "heim"sv, "heis"sv, "hevc"sv, "hevx"sv});
}

bool beginsHeif(std::string_view head)
{
    return hasBrand(head, std::array{"mif1"sv, "msf1"sv});
}

Result<VipsImagePtr> load(int descriptor)
{
    ensureHeifReady();
    if (auto status = findHevcThreads(); !status) return status.error();
    return loadStrictly(vips_heifload_source, descriptor);
}

void describe(int descriptor, VipsImage* image, Metadata& metadata, SourceFacts& facts)
{
    const HeifExtras extras = heifExtras(descriptor);
    readAttachedMetadata(image, metadata);
    metadata.xmp = extras.xmp;
    if (extras.colors && attachedProfile(image).empty()) attachColors(image, *extras.colors);

    int bits = 0; // as stored, which the image library widens
    if (vips_image_get_typeof(image, "heif-bitdepth") &&
        vips_image_get_int(image, "heif-bitdepth", &bits) == 0)
        facts.bits = bits;
    const auto isGainMap = [](const std::string& type) {
        return type.find("hdrgainmap") != std::string::npos;
    };
    facts.hasGainMap =
        std::ranges::any_of(extras.auxiliaryTypes, isGainMap) || heifItems(descriptor).contain("tmap");
}

// The brands only claim what the picture is coded with.
const Format* lookedInto(int descriptor)
{
    const std::string codec = heifItems(descriptor).codec();
    if (codec == "hevc") return &heicFormat;
    return codec == "av1" ? &avifFormat : nullptr;
}

// The picture in the codec's planes and as components.
std::int64_t decodingBytes(VipsImage* image)
{
    return wholePicture(image, 3);
}

// The components, planes, and what the search of the encoder keeps of each block.
std::int64_t encodingBytes(const EncodedShape& shape)
{
    constexpr int searchBytes = 12;
    return shape.pixels * (shape.pixelBytes + searchBytes);
}

constexpr FormatReader reader{
    .load = load, .describe = describe, .lookedInto = lookedInto, .heldBytes = decodingBytes};
constexpr FormatWriter heicWriter{
    .encode = encodeHeic, .isAvailable = hasHevcEncoder, .heldBytes = encodingBytes};
// Readers of this container refuse longer edges, our own among them.
constexpr StorageLimits heicLimits{.holdsAlpha = true, .profiles = ProfileStorage::any, .longestEdge = 16384};

constexpr std::array heicExtensions{"heic"sv};
constexpr std::array heifExtensions{"heif"sv};
constexpr std::array heicMimeTypes{"image/heic"sv};
constexpr std::array heifMimeTypes{"image/heif"sv};
constexpr std::array avifMimeTypes{"image/avif"sv};

} // namespace

constinit const Format heicFormat{.identifier = "public.heic",
                                  .preferredExtension = "heic",
                                  .extensions = heicExtensions,
                                  .mimeTypes = heicMimeTypes,
                                  .begins = beginsHeic,
                                  .limits = heicLimits,
                                  .reader = &reader,
                                  .writer = &heicWriter};

constinit const Format heifFormat{.identifier = "public.heif",
                                  .preferredExtension = "heif",
                                  .extensions = heifExtensions,
                                  .mimeTypes = heifMimeTypes,
                                  .begins = beginsHeif,
                                  .limits = {},
                                  .reader = &reader,
                                  .writer = nullptr};

constinit const Format avifFormat{.identifier = "public.avif",
                                  .preferredExtension = "avif",
                                  .extensions = {},
                                  .mimeTypes = avifMimeTypes,
                                  .begins = beginsAvif,
                                  .limits = {},
                                  .reader = &reader,
                                  .writer = nullptr};

} // namespace lumora
