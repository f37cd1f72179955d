// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/format.h"

#include "system/regular_file.h"

#include <unistd.h>

#include <algorithm>
#include <array>

namespace lumora {
namespace {

constexpr std::array<const Format*, 9> table{&jpegFormat, &pngFormat,  &gifFormat,  &tiffFormat, &bmpFormat,
                                             &avifFormat, &heicFormat, &heifFormat, &webpFormat};

} // namespace

std::span<const Format* const> formats()
{
    return table;
}

const Format* formatWithIdentifier(std::string_view identifier)
{
    const auto found = std::ranges::find(table, identifier, &Format::identifier);
    return found == table.end() ? nullptr : *found;
}

std::vector<std::string> writableTypeIdentifiers()
{
    std::vector<std::string> identifiers;
    for (const Format* format : table) {
        if (format->writtenBy == WrittenBy::codec) identifiers.emplace_back(format->identifier);
    }
    return identifiers;
}

const Format* formatOfContent(std::span<const std::byte> head)
{
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes as characters
    const std::string_view text(reinterpret_cast<const char*>(head.data()), head.size());
    const auto found =
        std::ranges::find_if(table, [text](const Format* format) { return format->begins(text); });
    return found == table.end() ? nullptr : *found;
}

const Format* formatOfFile(int descriptor)
{
    std::array<std::byte, sniffLength> head{};
    const ssize_t count = pread(descriptor, head.data(), head.size(), 0);
    if (count <= 0) return nullptr;
    const Format* const claimed = formatOfContent(std::span(head).first(static_cast<std::size_t>(count)));
    if (!claimed || !claimed->lookedInto) return claimed;
    const Format* const found = claimed->lookedInto(descriptor);
    return found ? found : claimed;
}

const Format* formatOfFile(const std::filesystem::path& path)
{
    const auto file = openRegularFile(path);
    return file ? formatOfFile(file->get()) : nullptr;
}

} // namespace lumora
