// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/heif_items.h"

#include "system/file_bytes.h"

#include <unistd.h>

#include <algorithm>
#include <optional>
#include <string_view>

namespace lumora {
namespace {

constexpr std::size_t largestList = std::size_t{1} << 22U;
constexpr std::size_t fullBoxHead = 4; // a version and flags

std::string readUpTo(int descriptor, std::uint64_t at, std::size_t size)
{
    std::string bytes(size, '\0');
    const ssize_t count = pread(descriptor, bytes.data(), size, static_cast<off_t>(at));
    bytes.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    return bytes;
}

// The content of the file's list of items.
std::string metaBox(int descriptor)
{
    constexpr std::size_t longestHead = 16;
    std::uint64_t at = 0;
    for (;;) {
        const std::string head = readUpTo(descriptor, at, longestHead);
        if (head.size() < 8) return {};
        const bool isLong = bigEndianAt(head, 0, 4) == 1;
        const std::uint64_t headSize = isLong ? 16 : 8;
        const std::uint64_t size = isLong ? bigEndianAt(head, 8, 8) : bigEndianAt(head, 0, 4);
        constexpr std::uint64_t largestFile = std::uint64_t{1} << 62U;
        if (size < headSize || size > largestFile - at) return {};
        if (head.substr(4, 4) == "meta")
            return readUpTo(descriptor, at + headSize, std::min<std::uint64_t>(size - headSize, largestList));
        at += size;
    }
}

struct Box
{
    std::string_view type;
    std::string_view content;
};

// Takes the first box off the front; absent at the end and at damage.
std::optional<Box> takeBox(std::string_view& bytes)
{
    constexpr std::size_t headSize = 8;
    const std::size_t size = bigEndianAt(bytes, 0, 4);
    if (bytes.size() < headSize || size < headSize || size > bytes.size()) return std::nullopt;
    const Box box{bytes.substr(4, 4), bytes.substr(headSize, size - headSize)};
    bytes.remove_prefix(size);
    return box;
}

void addItem(HeifItems& items, std::string_view entry)
{
    constexpr std::size_t typeLength = 4;
    const auto version = bigEndianAt(entry, 0, 1);
    if (version < 2) return;
    const std::size_t numberLength = version == 2 ? 2 : 4;
    const std::size_t typeAt = fullBoxHead + numberLength + 2;
    if (entry.size() < typeAt + typeLength) return;
    items.types[static_cast<std::uint32_t>(bigEndianAt(entry, fullBoxHead, numberLength))] =
        entry.substr(typeAt, typeLength);
}

void addItems(HeifItems& items, std::string_view list)
{
    const std::size_t countLength = bigEndianAt(list, 0, 1) == 0 ? 2 : 4;
    list.remove_prefix(std::min(fullBoxHead + countLength, list.size()));
    while (const auto box = takeBox(list)) {
        if (box->type == "infe") addItem(items, box->content);
    }
}

void addCodings(HeifItems& items, std::string_view properties)
{
    constexpr std::size_t matrixAt = 8; // after the kind and two other codes
    while (const auto set = takeBox(properties)) {
        if (set->type != "ipco") continue;
        std::string_view left = set->content;
        while (const auto box = takeBox(left)) {
            if (box->type != "colr" || box->content.substr(0, 4) != "nclx") continue;
            items.codings.push_back({static_cast<unsigned>(bigEndianAt(box->content, matrixAt, 2)),
                                     (bigEndianAt(box->content, matrixAt + 2, 1) & 0x80U) != 0});
        }
    }
}

std::string typeOf(const HeifItems& items, std::uint32_t number)
{
    const auto found = items.types.find(number);
    return found == items.types.end() ? std::string() : found->second;
}

} // namespace

std::string HeifItems::codec() const
{
    const std::string type = typeOf(*this, primary);
    const bool isMadeOfOthers = type == "grid" || type == "iden" || type == "iovl" || type == "tmap";
    if (type == "hvc1" || (isMadeOfOthers && contain("hvc1"))) return "hevc";
    return type == "av01" || (isMadeOfOthers && contain("av01")) ? "av1" : "";
}

bool HeifItems::isOnePiece() const
{
    const std::string type = typeOf(*this, primary);
    return type == "hvc1" || type == "av01";
}

bool HeifItems::contain(const std::string& type) const
{
    return std::ranges::any_of(types, [&](const auto& item) { return item.second == type; });
}

HeifItems heifItems(int descriptor)
{
    HeifItems items;
    const std::string meta = metaBox(descriptor);
    std::string_view left = std::string_view(meta).substr(std::min(fullBoxHead, meta.size()));
    while (const auto box = takeBox(left)) {
        const std::size_t numberLength = bigEndianAt(box->content, 0, 1) == 0 ? 2 : 4;
        if (box->type == "pitm")
            items.primary = static_cast<std::uint32_t>(bigEndianAt(box->content, fullBoxHead, numberLength));
        if (box->type == "iinf") addItems(items, box->content);
        if (box->type == "iprp") addCodings(items, box->content);
    }
    return items;
}

} // namespace lumora
