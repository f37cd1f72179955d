// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// File URIs as bytes. Libraries' URIs hold text, and a file name that is not UTF-8 does not survive it; these
// functions go from the bytes of a drop or of a request on the bus straight to a path and back. Pure but for
// the machine's name; thread-safe.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumora {

// The absolute path of a "file:" URI of this machine: no host, "localhost" or the machine's own name. Absent
// for every other scheme or host, and where the decoded path would hold a NUL. A "%" that starts no escape, a
// "?" and a "#" stand for themselves, since some senders leave them bare.
std::optional<std::filesystem::path> pathFromFileUri(std::string_view uri);

// The URI of an absolute path; every byte that is not plain in a URI is escaped.
std::string fileUri(const std::filesystem::path& path);

// The URIs of a `text/uri-list`, as parts of it: one a line, lines that start with "#" are comments.
std::vector<std::string_view> urisOfList(std::string_view uriList);

// The paths of the local files among them, in order.
std::vector<std::filesystem::path> pathsOfUriList(std::string_view uriList);

} // namespace lumora
