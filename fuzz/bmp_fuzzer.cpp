// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A BMP is read as a whole picture or fails, and a picture that was read is the same after writing and
// reading it.
#include "fuzz/fuzzing.h"
#include "tests/support/encoded_bmp.h"

namespace {

using lumora::fuzz::require;

void checkWriting(const lumora::BmpHeader& header, const std::vector<std::byte>& rows)
{
    const auto width = static_cast<int>(header.width);
    const auto height = static_cast<int>(header.height);
    const auto again = lumora::decodeBmp(lumora::test::encodedBmp(width, height, header.channels(), rows));
    require(again && *again == rows);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto bytes = std::as_bytes(std::span(data, size));
    const auto header = lumora::readBmpHeader(bytes);
    if (!header || header->width * header->height > lumora::fuzz::maximumPixels) return 0;
    const auto rows = lumora::decodeBmp(bytes);
    if (!rows) return 0;
    require(static_cast<std::int64_t>(rows->size()) == header->width * header->height * header->channels());
    checkWriting(*header, *rows);
    return 0;
}
