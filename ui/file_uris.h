// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// File URIs as bytes. QUrl holds text, and a file name that is not UTF-8 does not survive it; these functions
// go from the bytes of a drop or of a request on the bus straight to a path and back. Pure but for the
// machine's name.
#pragma once

#include <QByteArray>

#include <filesystem>
#include <optional>
#include <vector>

namespace lumora {

// The absolute path of a "file:" URI of this machine: no host, "localhost" or the machine's own name. Absent
// for every other scheme or host, and where the decoded path would hold a NUL. A "%" that starts no escape, a
// "?" and a "#" stand for themselves, since some senders leave them bare.
std::optional<std::filesystem::path> pathFromFileUri(const QByteArray& uri);

// The URI of an absolute path; every byte that is not plain in a URI is escaped.
QByteArray fileUri(const std::filesystem::path& path);

// The URIs of a `text/uri-list`: one a line, lines that start with "#" are comments.
std::vector<QByteArray> urisOfList(const QByteArray& uriList);

// The paths of the local files among them, in order.
std::vector<std::filesystem::path> pathsOfUriList(const QByteArray& uriList);

} // namespace lumora
