// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "xmp_split.h"

#include <glib.h>

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <utility>
#include <vector>

namespace lumora {
namespace {

// Of the property at the top that the datum is a part of.
std::string wholeKey(const Exiv2::Xmpdatum& datum)
{
    const std::string key = datum.key();
    return key.substr(0, key.find_first_of("/["));
}

std::size_t sizeOf(const Exiv2::Xmpdatum& datum)
{
    constexpr std::size_t markup = 20;
    return datum.tagName().size() + static_cast<std::size_t>(datum.size()) + markup;
}

// The largest ones, until what remains is of the wanted size.
std::set<std::string> keysToMove(const Exiv2::XmpData& data, std::size_t wanted)
{
    std::map<std::string, std::size_t> sizes;
    std::size_t left = 0;
    for (const auto& datum : data) {
        sizes[wholeKey(datum)] += sizeOf(datum);
        left += sizeOf(datum);
    }
    std::vector<std::pair<std::size_t, std::string>> order;
    order.reserve(sizes.size());
    for (const auto& [key, size] : sizes)
        order.emplace_back(size, key);
    std::ranges::sort(order, std::greater());
    std::set<std::string> moved;
    for (const auto& [size, key] : order) {
        if (left <= wanted) break;
        moved.insert(key);
        left -= size;
    }
    return moved;
}

std::string nameOf(const std::string& extension)
{
    const std::unique_ptr<char, void (*)(void*)> digits(
        g_compute_checksum_for_data(G_CHECKSUM_MD5, bytesOf(extension), extension.size()), g_free);
    std::string name = digits.get();
    std::ranges::transform(name, name.begin(), g_ascii_toupper);
    return name;
}

SplitXmp splitAt(const Exiv2::XmpData& data, const std::set<std::string>& moved, const EncodeXmp& encode)
{
    Exiv2::XmpData first;
    Exiv2::XmpData second;
    for (const auto& datum : data)
        (moved.contains(wholeKey(datum)) ? second : first).add(datum);
    std::string extension = encode(second, true);
    if (extension.empty()) return {};
    std::string name = nameOf(extension);
    first["Xmp.xmpNote.HasExtendedXMP"] = name;
    return {encode(first, false), std::move(extension), std::move(name)};
}

} // namespace

SplitXmp split(const Exiv2::XmpData& data, std::size_t longest, const EncodeXmp& encode)
{
    Exiv2::XmpProperties::registerNs("http://ns.adobe.com/xmp/note/", "xmpNote");
    // Sizes are guessed before the packet is written, so it takes a second look now and then.
    for (std::size_t wanted = longest / 2; wanted > 0; wanted /= 2) {
        SplitXmp attempt = splitAt(data, keysToMove(data, wanted), encode);
        if (attempt.packet.size() <= longest) return attempt;
    }
    return {};
}

} // namespace lumora
