// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "vips_loading.h"

#include "metadata/reading.h"

namespace lumora {

Result<VipsImagePtr> loadStrictly(VipsLoad load, int descriptor)
{
    const std::unique_ptr<VipsSource, VipsUnref> source(vips_source_new_from_descriptor(descriptor));
    VipsImage* image = nullptr;
    if (!source || load(source.get(), &image, "access", VIPS_ACCESS_SEQUENTIAL, "fail_on", VIPS_FAIL_ON_ERROR,
                        nullptr) != 0)
        return takeVipsError();
    return VipsImagePtr(image);
}

void readAttachedMetadata(VipsImage* image, Metadata& metadata)
{
    readBlocks(blobOf(image, VIPS_META_EXIF_NAME), blobOf(image, VIPS_META_XMP_NAME), metadata);
}

} // namespace lumora
