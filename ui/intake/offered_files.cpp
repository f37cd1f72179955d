// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/intake/offered_files.h"

#include "engine/image_file_filter.h"
#include "system/file_uris.h"
#include "ui/intake/portal_file_transfer.h"

#include <QMimeData>
#include <QThreadPool>

#include <algorithm>
#include <chrono>
#include <future>
#include <memory>

namespace lumora {
namespace {

using Paths = std::vector<std::filesystem::path>;

constexpr QLatin1String uriListType("text/uri-list");
// What some file managers put on the clipboard in place of a plain list: "copy" or "cut", then the URIs.
constexpr QLatin1String copiedFilesType("x-special/gnome-copied-files");

constexpr std::chrono::milliseconds patience(50);

std::string uriList(const QMimeData& data)
{
    if (data.hasFormat(uriListType)) return data.data(uriListType).toStdString();
    const QByteArray copied = data.data(copiedFilesType);
    return copied.mid(copied.indexOf('\n') + 1).toStdString();
}

// A file on a sleeping network share may take long to look at.
bool holdFolder(Paths files)
{
    auto promise = std::make_shared<std::promise<bool>>();
    std::future<bool> answer = promise->get_future();
    QThreadPool::globalInstance()->start([promise, files = std::move(files)] {
        promise->set_value(std::any_of(files.begin(), files.end(), ImageFileFilter::canContainImages));
    });
    return answer.wait_for(patience) != std::future_status::ready || answer.get();
}

} // namespace

bool offersFiles(const QMimeData& data)
{
    if (!portalTransferKey(data).isEmpty()) return true;
    if (!data.hasFormat(uriListType) && !data.hasFormat(copiedFilesType)) return false;
    const std::string list = uriList(data);
    return urisOfList(list).empty() || !pathsOfUriList(list).empty();
}

bool offersImages(const QMimeData& data)
{
    if (!portalTransferKey(data).isEmpty()) return true;
    Paths files = listedFiles(data);
    if (files.empty()) return false;
    return std::any_of(files.begin(), files.end(), ImageFileFilter::isImage) || holdFolder(std::move(files));
}

Paths listedFiles(const QMimeData& data)
{
    return pathsOfUriList(uriList(data));
}

} // namespace lumora
