// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Whatever is left out of a file that decodes, what is left decodes to the same components, and says nothing
// when metadata is left out.
#include "formats/file_copy.h"
#include "formats/image_source.h"
#include "fuzz/fuzzing.h"
#include "metadata/metadata_parts.h"
#include "pixels/decoding.h"
#include "system/file_descriptor.h"
#include "system/output_file.h"

#include <vips/vips.h>

#include <fcntl.h>
#include <sys/mman.h>

#include <optional>
#include <vector>

namespace {

using lumora::fuzz::require;

std::optional<lumora::ImageSource> sourceOf(int descriptor)
{
    auto source = lumora::ImageSource::open(lumora::FileDescriptor(fcntl(descriptor, F_DUPFD_CLOEXEC, 0)));
    if (!source) return std::nullopt;
    return std::move(*source);
}

// None when the picture is damaged.
std::optional<std::vector<std::uint8_t>> componentsOf(const lumora::ImageSource& source)
{
    const auto decoded = lumora::decode(source.image());
    if (!decoded) return std::nullopt;
    std::size_t size = 0;
    void* const memory = vips_image_write_to_memory(decoded->pixels(), &size);
    require(memory != nullptr);
    const auto* const bytes = static_cast<const std::uint8_t*>(memory);
    std::vector<std::uint8_t> components(bytes, bytes + size);
    g_free(memory);
    return components;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const lumora::FileDescriptor file(memfd_create("fuzz", MFD_CLOEXEC));
    require(write(file.get(), data, size) == static_cast<ssize_t>(size));
    const auto source = sourceOf(file.get());
    if (!source || source->image().width() * source->image().height() > lumora::fuzz::maximumPixels) return 0;
    const auto components = componentsOf(*source);
    if (!components) return 0;
    for (const lumora::LeftOut& leftOut :
         {lumora::LeftOut{.metadata = true}, lumora::LeftOut{.profile = true},
          lumora::LeftOut{.metadata = true, .profile = true}}) {
        lumora::OutputFile output(lumora::FileDescriptor(memfd_create("copy", MFD_CLOEXEC)), "copy");
        const auto isCopied = lumora::copyFile(file.get(), *source->typeIdentifier(), leftOut, output);
        require(static_cast<bool>(isCopied));
        if (!*isCopied) continue;
        const auto copy = sourceOf(output.descriptor());
        require(copy && copy->typeIdentifier() == source->typeIdentifier());
        require(componentsOf(*copy) == components);
        require(!leftOut.metadata || lumora::missingParts(copy->metadata(), {}).empty());
    }
    return 0;
}
