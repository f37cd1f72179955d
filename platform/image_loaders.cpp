// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/image_loaders.h"

#include "platform/bmp_codec.h"

#include <vips/vips.h>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <vector>

namespace lumora {
namespace {

using Load = int (*)(VipsSource* source, VipsImage** out);

// The options of every loader: rows in order, stop at damage.
#define LUMORA_STRICT_SEQUENTIAL "access", VIPS_ACCESS_SEQUENTIAL, "fail_on", VIPS_FAIL_ON_ERROR, nullptr

int loadJpeg(VipsSource* source, VipsImage** out)
{
    return vips_jpegload_source(source, out, LUMORA_STRICT_SEQUENTIAL);
}

int loadPng(VipsSource* source, VipsImage** out)
{
    return vips_pngload_source(source, out, LUMORA_STRICT_SEQUENTIAL);
}

int loadGif(VipsSource* source, VipsImage** out)
{
    return vips_gifload_source(source, out, LUMORA_STRICT_SEQUENTIAL);
}

int loadTiff(VipsSource* source, VipsImage** out)
{
    return vips_tiffload_source(source, out, LUMORA_STRICT_SEQUENTIAL);
}

int loadHeif(VipsSource* source, VipsImage** out)
{
    ensureHeifReady();
    return vips_heifload_source(source, out, LUMORA_STRICT_SEQUENTIAL);
}

int loadWebp(VipsSource* source, VipsImage** out)
{
    return vips_webpload_source(source, out, LUMORA_STRICT_SEQUENTIAL);
}

#undef LUMORA_STRICT_SEQUENTIAL

struct Loader
{
    std::string_view typeIdentifier;
    Load load;
};

constexpr std::array<Loader, 8> loaders{{
    {"public.jpeg", loadJpeg},
    {"public.png", loadPng},
    {"com.compuserve.gif", loadGif},
    {"public.tiff", loadTiff},
    {"public.heic", loadHeif},
    {"public.heif", loadHeif},
    {"public.avif", loadHeif},
    {"org.webmproject.webp", loadWebp},
}};

Result<std::vector<std::byte>> readWhole(int descriptor)
{
    struct stat status = {};
    if (fstat(descriptor, &status) != 0) return Error{std::strerror(errno)};
    std::vector<std::byte> bytes(static_cast<std::size_t>(status.st_size));
    std::size_t filled = 0;
    while (filled < bytes.size()) {
        const ssize_t count =
            pread(descriptor, bytes.data() + filled, bytes.size() - filled, static_cast<off_t>(filled));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return Error{std::strerror(errno)};
        if (count == 0) break;
        filled += static_cast<std::size_t>(count);
    }
    bytes.resize(filled);
    return bytes;
}

// Not lazy: the format is rare and its files are as large as their pixels anyway.
Result<VipsImagePtr> loadBmp(int descriptor)
{
    const auto file = readWhole(descriptor);
    if (!file) return file.error();
    const auto header = readBmpHeader(*file);
    if (!header) return header.error();
    const auto rows = decodeBmp(*file);
    if (!rows) return rows.error();

    const VipsImagePtr memory(vips_image_new_from_memory_copy(
        rows->data(), rows->size(), static_cast<int>(header->width), static_cast<int>(header->height),
        header->channels(), VIPS_FORMAT_UCHAR));
    VipsImage* tagged = nullptr;
    if (!memory ||
        vips_copy(memory.get(), &tagged, "interpretation", VIPS_INTERPRETATION_sRGB, nullptr) != 0) {
        return takeVipsError();
    }
    if (!header->iccProfile.empty()) {
        vips_image_set_blob_copy(tagged, VIPS_META_ICC_NAME, header->iccProfile.data(),
                                 header->iccProfile.size());
    }
    return VipsImagePtr(tagged);
}

} // namespace

Result<VipsImagePtr> loadFirstPicture(std::string_view typeIdentifier, int descriptor)
{
    ensureVipsReady();
    if (typeIdentifier == "com.microsoft.bmp") return loadBmp(descriptor);
    const auto loader = std::ranges::find(loaders, typeIdentifier, &Loader::typeIdentifier);
    if (loader == loaders.end()) return Error{"no decoder for this type"};

    const std::unique_ptr<VipsSource, VipsUnref> source(vips_source_new_from_descriptor(descriptor));
    VipsImage* image = nullptr;
    if (!source || loader->load(source.get(), &image) != 0) return takeVipsError();
    return VipsImagePtr(image);
}

Result<VipsImagePtr> loadReducedJpeg(int divisor, int descriptor)
{
    const std::unique_ptr<VipsSource, VipsUnref> source(vips_source_new_from_descriptor(descriptor));
    VipsImage* image = nullptr;
    if (!source ||
        vips_jpegload_source(source.get(), &image, "shrink", divisor, "access", VIPS_ACCESS_SEQUENTIAL,
                             "fail_on", VIPS_FAIL_ON_ERROR, nullptr) != 0) {
        return takeVipsError();
    }
    return VipsImagePtr(image);
}

} // namespace lumora
