// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Whatever metadata a file carries, its picture is written whole in every format that keeps metadata. The
// first letter of an input says what the rest is: an EXIF block (e), an XMP packet (x), IPTC records in their
// image resource (i), or a whole file of any kind (f).
#include "encoding.h"
#include "formats/image_source.h"
#include "fuzz/fuzzing.h"
#include "pixels/decoding.h"
#include "system/file_descriptor.h"
#include "system/output_file.h"
#include "system/regular_file.h"
#include "tests/support/encoded_bmp.h"

#include <algorithm>
#include <array>
#include <string>
#include <sys/mman.h>
#include <vector>

namespace {

using namespace std::string_view_literals;
using lumora::fuzz::require;
using Bytes = std::vector<std::byte>;

constexpr std::int64_t edge = 8;
constexpr std::int64_t mostPixels = 4096; // every input is written three times

struct MemoryFile
{
    explicit MemoryFile(const Bytes& bytes) : descriptor(::memfd_create("fuzz", MFD_CLOEXEC))
    {
        require(::write(descriptor.get(), bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()));
    }
    std::filesystem::path path() const { return "/proc/self/fd/" + std::to_string(descriptor.get()); }

    lumora::FileDescriptor descriptor;
};

void append(Bytes& bytes, std::string_view text)
{
    std::ranges::transform(text, std::back_inserter(bytes), [](char c) { return std::byte(c); });
}

Bytes encoded(const lumora::Format& format, const lumora::Image& picture, int quality,
              const lumora::Metadata& metadata)
{
    constexpr std::size_t most = std::size_t{1} << 24U;
    lumora::OutputFile file(lumora::FileDescriptor(::memfd_create("encoded", MFD_CLOEXEC)), "encoded");
    require(static_cast<bool>(lumora::encodeImage(format, picture, quality, metadata, file)));
    auto bytes = lumora::readAll(file.descriptor(), most);
    require(static_cast<bool>(bytes));
    return std::move(*bytes);
}

Bytes makePlainJpeg()
{
    const Bytes gray(edge * edge, std::byte{99});
    const MemoryFile bmp(lumora::test::encodedBmp(edge, edge, 1, gray));
    const auto source = lumora::ImageSource::open(bmp.path());
    require(static_cast<bool>(source));
    return encoded(lumora::jpegFormat, source->image(), 50, {});
}

Bytes jpegWith(unsigned char marker, std::string_view prefix, std::span<const std::byte> block)
{
    static const Bytes plain = makePlainJpeg();
    constexpr std::size_t longest = 65533;
    const std::size_t size = std::min(prefix.size() + block.size(), longest);
    block = block.first(size - prefix.size());
    Bytes jpeg{std::byte{0xFF}, std::byte{0xD8}, std::byte{0xFF}, std::byte{marker}};
    jpeg.push_back(std::byte((size + 2) >> 8U));
    jpeg.push_back(std::byte((size + 2) & 0xFFU));
    append(jpeg, prefix);
    jpeg.insert(jpeg.end(), block.begin(), block.end());
    jpeg.insert(jpeg.end(), plain.begin() + 2, plain.end());
    return jpeg;
}

Bytes fileOf(std::byte kind, std::span<const std::byte> block)
{
    switch (std::to_integer<char>(kind)) {
    case 'e':
        return jpegWith(0xE1, "Exif\0\0"sv, block);
    case 'x':
        return jpegWith(0xE1, "http://ns.adobe.com/xap/1.0/\0"sv, block);
    case 'i':
        return jpegWith(0xED, "Photoshop 3.0\0"sv, block);
    default:
        return {block.begin(), block.end()};
    }
}

void checkWriting(const lumora::Image& picture, const lumora::Metadata& metadata)
{
    for (const lumora::Format* format : {&lumora::jpegFormat, &lumora::pngFormat, &lumora::tiffFormat}) {
        const MemoryFile file(encoded(*format, picture, 80, metadata));
        const auto again = lumora::ImageSource::open(file.path());
        require(static_cast<bool>(again));
        const auto decoded = lumora::decode(again->image());
        require(decoded && decoded->width() == picture.width() && decoded->height() == picture.height());
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0) return 0;
    const auto input = std::as_bytes(std::span(data, size));
    const MemoryFile file(fileOf(input[0], input.subspan(1)));
    const auto source = lumora::ImageSource::open(file.path());
    if (!source || source->image().width() * source->image().height() > mostPixels) return 0;
    const auto picture = lumora::decode(source->image());
    if (picture) checkWriting(*picture, source->metadata());
    return 0;
}
