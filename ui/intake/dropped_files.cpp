// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/intake/dropped_files.h"

#include "engine/image_file_filter.h"
#include "system/file_uris.h"
#include "ui/intake/portal_file_transfer.h"

#include <QFutureWatcher>
#include <QMimeData>
#include <QPromise>
#include <QThreadPool>

#include <memory>
#include <optional>

namespace lumora {
namespace {

using Paths = DroppedFilesLoader::Paths;

constexpr QLatin1String uriListType("text/uri-list");
// What some file managers put on the clipboard in place of a plain list: "copy" or "cut", then the URIs.
constexpr QLatin1String copiedFilesType("x-special/gnome-copied-files");

QByteArray uriList(const QMimeData& data)
{
    if (data.hasFormat(uriListType)) return data.data(uriListType);
    const QByteArray copied = data.data(copiedFilesType);
    return copied.mid(copied.indexOf('\n') + 1);
}

Paths imagesAndFolders(Paths items)
{
    std::erase_if(items, [](const auto& item) { return !ImageFileFilter::canContainImages(item); });
    return items;
}

} // namespace

bool offersFiles(const QMimeData& data)
{
    if (!portalTransferKey(data).isEmpty()) return true;
    if (!data.hasFormat(uriListType) && !data.hasFormat(copiedFilesType)) return false;
    const std::string list = uriList(data).toStdString();
    return urisOfList(list).empty() || !pathsOfUriList(list).empty();
}

DroppedFilesLoader::DroppedFilesLoader(HandOver handOver, QObject* parent)
    : QObject(parent), m_handOver(std::move(handOver))
{
}

void DroppedFilesLoader::load(const QMimeData& data)
{
    const Paths listed = pathsOfUriList(uriList(data).toStdString());
    const QString key = portalTransferKey(data);
    if (key.isEmpty()) return load(listed);
    retrievePortalFiles(QDBusConnection::sessionBus(), key, this, [this, listed](std::optional<Paths> files) {
        load(files ? std::move(*files) : listed);
    });
}

void DroppedFilesLoader::load(Paths items)
{
    auto promise = std::make_shared<QPromise<Paths>>();
    auto* watcher = new QFutureWatcher<Paths>(this);
    connect(watcher, &QFutureWatcher<Paths>::finished, this, [this, watcher] {
        watcher->deleteLater();
        m_handOver(watcher->result());
    });
    watcher->setFuture(promise->future());
    QThreadPool::globalInstance()->start([promise, items = std::move(items)]() mutable {
        promise->start();
        promise->addResult(imagesAndFolders(std::move(items)));
        promise->finish();
    });
}

} // namespace lumora
