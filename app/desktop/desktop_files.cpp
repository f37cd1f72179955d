// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/desktop/desktop_files.h"

#include "system/file_uris.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QStringList>
#include <QUrl>

namespace lumora {
namespace {

// A file browser that the call starts needs a while; then the folder alone is better than nothing.
constexpr int replyTimeout = 15000;

} // namespace

void showInFileBrowser(const QDBusConnection& bus, const std::filesystem::path& file)
{
    // A call without a bus never finishes.
    if (!bus.isConnected()) return openFile(file.parent_path());
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call << QStringList{QString::fromStdString(fileUri(file))} << QString();
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, replyTimeout));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, file] {
        if (watcher->isError()) openFile(file.parent_path());
        watcher->deleteLater();
    });
}

void openFile(const std::filesystem::path& file)
{
    // As an encoded address: the bytes of a name need not be text.
    openLink(QUrl::fromEncoded(QByteArray::fromStdString(fileUri(file)), QUrl::StrictMode));
}

void openLink(const QUrl& link)
{
    if (link.isValid()) QDesktopServices::openUrl(link);
}

} // namespace lumora
