// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/desktop/desktop_files.h"

#include "system/file_uris.h"
#include "ui/bus/bus_call.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QStringList>
#include <QUrl>

namespace lumora {
namespace {

// A file browser that the call starts needs a while; then the folder alone is better than nothing.
constexpr std::chrono::seconds replyTimeout(15);

} // namespace

void showInFileBrowser(const QDBusConnection& bus, const std::filesystem::path& file)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call << QStringList{QString::fromStdString(fileUri(file))} << QString();
    callOnBus(bus, call, replyTimeout, qApp, [file](const QDBusPendingCall& answer) {
        if (answer.isError()) openFile(file.parent_path());
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
