// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Any file is opened and decoded as a whole or fails, by whatever decoder its first bytes choose.
#include "formats/image_source.h"
#include "fuzz/fuzzing.h"
#include "pixels/decoding.h"
#include "system/file_descriptor.h"

#include <string>
#include <sys/mman.h>

namespace {

// The only kind of file that needs no disk.
std::filesystem::path fillMemoryFile(int descriptor, std::span<const std::uint8_t> bytes)
{
    lumora::fuzz::require(::write(descriptor, bytes.data(), bytes.size()) ==
                          static_cast<ssize_t>(bytes.size()));
    return "/proc/self/fd/" + std::to_string(descriptor);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const lumora::FileDescriptor file(::memfd_create("fuzz", MFD_CLOEXEC));
    lumora::fuzz::require(file.isOpen());
    const auto source = lumora::ImageSource::open(fillMemoryFile(file.get(), {data, size}));
    if (!source) return 0;
    const lumora::Image picture = source->image();
    if (picture.width() * picture.height() > lumora::fuzz::maximumPixels) return 0;
    const auto decoded = lumora::decode(picture);
    if (!decoded) return 0;
    lumora::fuzz::require(decoded->isInMemory());
    lumora::fuzz::require(decoded->width() == picture.width() && decoded->height() == picture.height());
    return 0;
}
