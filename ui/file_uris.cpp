// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/file_uris.h"

#include <QList>
#include <QString>
#include <QSysInfo>

namespace lumora {
namespace {

constexpr char fileScheme[] = "file:";
constexpr qsizetype fileSchemeLength = sizeof fileScheme - 1;

bool namesThisMachine(const QByteArray& host)
{
    const auto equals = [&host](const char* name) { return host.compare(name, Qt::CaseInsensitive) == 0; };
    return host.isEmpty() || equals("localhost") || equals(QSysInfo::machineHostName().toUtf8().constData());
}

// What follows the host in "//host/path"; everything in "/path". Absent where the host is another machine.
std::optional<QByteArray> localPart(const QByteArray& rest)
{
    if (!rest.startsWith("//")) return rest;
    const qsizetype pathStart = rest.indexOf('/', 2);
    if (pathStart < 0 || !namesThisMachine(rest.mid(2, pathStart - 2))) return std::nullopt;
    return rest.mid(pathStart);
}

int hexValue(char digit)
{
    if (digit >= '0' && digit <= '9') return digit - '0';
    if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
    if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
    return -1;
}

// QByteArray::fromPercentEncoding swallows characters after a "%" that starts no escape.
std::string percentDecoded(const QByteArray& text)
{
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(text.size()));
    for (qsizetype i = 0; i < text.size(); ++i) {
        const int high = text[i] == '%' && i + 2 < text.size() ? hexValue(text[i + 1]) : -1;
        const int low = high >= 0 ? hexValue(text[i + 2]) : -1;
        bytes += low >= 0 ? static_cast<char>(high * 16 + low) : text[i];
        if (low >= 0) i += 2;
    }
    return bytes;
}

} // namespace

std::optional<std::filesystem::path> pathFromFileUri(const QByteArray& uri)
{
    if (uri.left(fileSchemeLength).compare(fileScheme, Qt::CaseInsensitive) != 0) return std::nullopt;
    const std::optional<QByteArray> encoded = localPart(uri.mid(fileSchemeLength));
    if (!encoded) return std::nullopt;
    std::string path = percentDecoded(*encoded);
    if (!path.starts_with('/') || path.find('\0') != std::string::npos) return std::nullopt;
    return std::filesystem::path(std::move(path));
}

QByteArray fileUri(const std::filesystem::path& path)
{
    return "file://" + QByteArray::fromStdString(path.native()).toPercentEncoding("/");
}

std::vector<QByteArray> urisOfList(const QByteArray& uriList)
{
    std::vector<QByteArray> uris;
    for (const QByteArray& rawLine : uriList.split('\n')) {
        QByteArray line = rawLine.trimmed();
        // Some senders end the list with the NUL of a C string.
        while (line.endsWith('\0'))
            line.chop(1);
        line = line.trimmed();
        if (!line.isEmpty() && !line.startsWith('#')) uris.push_back(line);
    }
    return uris;
}

std::vector<std::filesystem::path> pathsOfUriList(const QByteArray& uriList)
{
    std::vector<std::filesystem::path> paths;
    for (const QByteArray& uri : urisOfList(uriList)) {
        if (auto path = pathFromFileUri(uri)) paths.push_back(std::move(*path));
    }
    return paths;
}

} // namespace lumora
