// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/intake/file_intake.h"

#include "engine/image_file_filter.h"
#include "ui/intake/offered_files.h"
#include "ui/intake/portal_file_transfer.h"

#include <QMimeData>

#include <optional>

namespace lumora {

FileIntake::FileIntake(QDBusConnection bus, QObject* parent) : QObject(parent), m_bus(std::move(bus))
{
    m_filters.setMaxThreadCount(1);
}

FileIntake::~FileIntake()
{
    m_filters.clear();
    m_filters.waitForDone();
}

void FileIntake::load(Paths items, Take take)
{
    ++m_loading;
    filter(std::move(items), std::move(take));
}

void FileIntake::load(const QMimeData& data, Take take)
{
    Paths listed = listedFiles(data);
    const QString key = portalTransferKey(data);
    if (key.isEmpty()) return load(std::move(listed), std::move(take));
    ++m_loading;
    retrievePortalFiles(
        m_bus, key, this,
        [this, listed = std::move(listed), take = std::move(take)](std::optional<Paths> files) {
            filter(files ? std::move(*files) : listed, take);
        });
}

void FileIntake::filter(Paths items, Take take)
{
    m_filters.start([this, items = std::move(items), take = std::move(take)]() mutable {
        std::erase_if(items, [](const auto& item) { return !ImageFileFilter::canContainImages(item); });
        // This object waits for its threads, and a call that it no longer hears goes with it.
        QMetaObject::invokeMethod(
            this, [this, items = std::move(items), take = std::move(take)] { end(items, take); },
            Qt::QueuedConnection);
    });
}

void FileIntake::end(const Paths& items, const Take& take)
{
    --m_loading;
    take(items);
    if (!isLoading()) Q_EMIT idle();
}

} // namespace lumora
