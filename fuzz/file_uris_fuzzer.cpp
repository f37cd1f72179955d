// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes may come as a list of URIs: what is found in it are absolute paths that their own URIs lead back
// to.
#include "fuzz/fuzzing.h"
#include "system/file_uris.h"

#include <string>
#include <string_view>

namespace {

using lumora::fuzz::require;

// A name of any bytes but NUL, which none can hold, survives as a URI and in a list of them.
void requireRoundTrip(const std::filesystem::path& path)
{
    const std::string uri = lumora::fileUri(path);
    require(lumora::pathFromFileUri(uri) == path);
    require(lumora::pathsOfUriList("# comment\r\n" + uri + "\r\n") == std::vector{path});
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes as characters
    const std::string_view list(reinterpret_cast<const char*>(data), size);
    for (const std::string_view uri : lumora::urisOfList(list))
        require(!uri.empty() && uri.find('\n') == std::string_view::npos);
    for (const std::filesystem::path& path : lumora::pathsOfUriList(list)) {
        require(path.is_absolute() && path.native().find('\0') == std::string::npos);
        requireRoundTrip(path);
    }
    std::string name = "/";
    name.append(list.substr(0, list.find('\0')));
    requireRoundTrip(name);
    return 0;
}
