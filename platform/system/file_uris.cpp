// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/file_uris.h"

#include <glib.h>

#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>

namespace lumora {
namespace {

constexpr std::string_view fileScheme = "file:";
constexpr std::string_view blanks = " \t\n\v\f\r";

bool equalsIgnoringCase(std::string_view a, std::string_view b)
{
    return std::ranges::equal(a, b, {}, g_ascii_tolower, g_ascii_tolower);
}

std::string machineName()
{
    std::array<char, HOST_NAME_MAX + 1> name{};
    return gethostname(name.data(), name.size()) == 0 ? std::string(name.data()) : std::string();
}

bool namesThisMachine(std::string_view host)
{
    return host.empty() || equalsIgnoringCase(host, "localhost") || equalsIgnoringCase(host, machineName());
}

// What follows the host in "//host/path"; everything in "/path". Absent where the host is another machine.
std::optional<std::string_view> localPart(std::string_view rest)
{
    if (!rest.starts_with("//")) return rest;
    const std::size_t pathStart = rest.find('/', 2);
    if (pathStart == std::string_view::npos || !namesThisMachine(rest.substr(2, pathStart - 2)))
        return std::nullopt;
    return rest.substr(pathStart);
}

// The libraries' own functions refuse or swallow characters after a "%" that starts no escape.
std::string percentDecoded(std::string_view text)
{
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == '%' && i + 2 < text.size() ? g_ascii_xdigit_value(text[i + 1]) : -1;
        const int low = high >= 0 ? g_ascii_xdigit_value(text[i + 2]) : -1;
        bytes += low >= 0 ? static_cast<char>(high * 16 + low) : text[i];
        if (low >= 0) i += 2;
    }
    return bytes;
}

std::string_view trimmed(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

} // namespace

std::optional<std::filesystem::path> pathFromFileUri(std::string_view uri)
{
    if (!equalsIgnoringCase(uri.substr(0, fileScheme.size()), fileScheme)) return std::nullopt;
    const std::optional<std::string_view> encoded = localPart(uri.substr(fileScheme.size()));
    if (!encoded) return std::nullopt;
    std::string path = percentDecoded(*encoded);
    if (!path.starts_with('/') || path.find('\0') != std::string::npos) return std::nullopt;
    return std::filesystem::path(std::move(path));
}

std::string fileUri(const std::filesystem::path& path)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    constexpr std::string_view plain = "/-._~";
    std::string uri = "file://";
    for (const char c : path.native()) {
        if (g_ascii_isalnum(c) || plain.find(c) != std::string_view::npos) {
            uri += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            uri += {'%', digits[byte >> 4U], digits[byte & 0xFU]};
        }
    }
    return uri;
}

std::vector<std::string_view> urisOfList(std::string_view uriList)
{
    std::vector<std::string_view> uris;
    while (!uriList.empty()) {
        const std::size_t end = std::min(uriList.find('\n'), uriList.size());
        std::string_view line = trimmed(uriList.substr(0, end));
        uriList.remove_prefix(std::min(end + 1, uriList.size()));
        // Some senders end the list with the NUL of a C string.
        while (line.ends_with('\0'))
            line.remove_suffix(1);
        line = trimmed(line);
        if (!line.empty() && !line.starts_with('#')) uris.push_back(line);
    }
    return uris;
}

std::vector<std::filesystem::path> pathsOfUriList(std::string_view uriList)
{
    std::vector<std::filesystem::path> paths;
    for (const std::string_view uri : urisOfList(uriList)) {
        if (auto path = pathFromFileUri(uri)) paths.push_back(std::move(*path));
    }
    return paths;
}

} // namespace lumora
