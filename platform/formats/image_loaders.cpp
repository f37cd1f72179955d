// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "image_loaders.h"

#include "bmp/bmp_loader.h"
#include "pixels/stored_form.h"
#include "png/png_chunk_reader.h"

#include <vips/vips.h>

#include <algorithm>
#include <array>

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

} // namespace

Result<VipsImagePtr> loadFirstPicture(std::string_view typeIdentifier, int descriptor)
{
    ensureVipsReady();
    if (typeIdentifier == "com.microsoft.bmp") return loadBmp(descriptor);
    if (typeIdentifier == "public.png" && !hasSoundPngHead(descriptor)) return Error{"damaged PNG"};
    const auto loader = std::ranges::find(loaders, typeIdentifier, &Loader::typeIdentifier);
    if (loader == loaders.end()) return Error{"no decoder for this type"};

    const std::unique_ptr<VipsSource, VipsUnref> source(vips_source_new_from_descriptor(descriptor));
    VipsImage* image = nullptr;
    if (!source || loader->load(source.get(), &image) != 0) return takeVipsError();
    if (typeIdentifier == "public.png") noteFormOfPng(image, descriptor);
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
