// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/worker/worker_messages.h"

#include "system/utf8.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>
#include <type_traits>

namespace lumora::ImageOptimizer {
namespace {

// Both sides come in one package; this tells a package that was exchanged under a running program.
constexpr std::uint32_t version = 5;
constexpr std::size_t longestType = 63;
constexpr std::size_t longestReason = 255;
constexpr std::size_t longestLoss = 127;
constexpr std::size_t mostLosses = 16;
constexpr std::size_t longestProfile = 127;

bool isControl(unsigned char c)
{
    return c < ' ' || c == 0x7F;
}

// What a file calls its colours may be anything.
std::string printable(std::string text)
{
    std::ranges::replace_if(text, isControl, ' ');
    return text;
}

// Puts values one behind the other; those that find no room are a mistake of this file.
class Writer
{
public:
    explicit Writer(std::size_t size) : m_bytes(size) {}

    template <class Value>
    void put(Value value)
    {
        static_assert(std::is_arithmetic_v<Value>);
        std::memcpy(m_bytes.data() + m_at, &value, sizeof value);
        m_at += sizeof value;
    }

    // Takes the room of the longest.
    void put(std::string_view text, std::size_t longest)
    {
        while (text.size() > longest || !isUtf8(text))
            text.remove_suffix(1);
        put(static_cast<std::uint8_t>(text.size()));
        std::ranges::transform(text, m_bytes.begin() + static_cast<std::ptrdiff_t>(m_at),
                               [](char c) { return static_cast<std::byte>(c); });
        m_at += longest;
    }

    std::vector<std::byte> bytes() && { return std::move(m_bytes); }

private:
    std::vector<std::byte> m_bytes;
    std::size_t m_at = 0;
};

class Reader
{
public:
    explicit Reader(std::span<const std::byte> bytes) : m_bytes(bytes) {}

    template <class Value>
    Value take()
    {
        Value value{};
        if (sizeof value > m_bytes.size()) {
            m_isSound = false;
            return value;
        }
        std::memcpy(&value, m_bytes.data(), sizeof value);
        m_bytes = m_bytes.subspan(sizeof value);
        return value;
    }

    bool takeBool()
    {
        const auto value = take<std::uint8_t>();
        m_isSound = m_isSound && value <= 1;
        return value == 1;
    }

    template <class Enum>
    Enum takeCase(Enum last)
    {
        const auto value = take<std::uint8_t>();
        m_isSound = m_isSound && value <= static_cast<std::uint8_t>(last);
        return m_isSound ? static_cast<Enum>(value) : last;
    }

    // Of printable text: what comes from a worker is shown.
    std::string takeText(std::size_t longest)
    {
        const std::size_t size = take<std::uint8_t>();
        if (size > longest || longest > m_bytes.size()) {
            m_isSound = false;
            return {};
        }
        std::string text(size, '\0');
        std::memcpy(text.data(), m_bytes.data(), size);
        m_bytes = m_bytes.subspan(longest);
        const bool isPrintable = isUtf8(text) && std::ranges::none_of(text, isControl);
        m_isSound = m_isSound && isPrintable;
        return text;
    }

    bool isSound() const { return m_isSound; }

private:
    std::span<const std::byte> m_bytes;
    bool m_isSound = true;
};

template <class Enum>
std::uint8_t number(Enum value)
{
    return static_cast<std::uint8_t>(value);
}

// 0 where nothing went wrong.
std::uint8_t numberOf(const std::optional<WorkError>& error)
{
    return error ? static_cast<std::uint8_t>(number(error->kind) + 1) : 0;
}

} // namespace

PixelSettings PixelSettings::of(const OptimizerSettings& settings)
{
    return {settings.resizeMode,    settings.maximumPixels,           settings.outputFormat,
            settings.quality,       settings.optimizeColorForSharing, settings.removeColorManagement,
            settings.removeMetadata};
}

OptimizerSettings PixelSettings::settings() const
{
    return {.resizeMode = resizeMode,
            .maximumPixels = maximumPixels,
            .outputFormat = outputFormat,
            .quality = quality,
            .optimizeColorForSharing = optimizeColorForSharing,
            .removeColorManagement = removeColorManagement,
            .removeMetadata = removeMetadata,
            .destinationMode = DestinationMode::originalLocation,
            .destinationFolderURL = std::nullopt,
            .filenamePrefix = {},
            .filenameSuffix = {},
            .moveOriginalToTrash = false,
            .preserveModificationTime = false,
            .warnBeforeOverwrite = false};
}

std::vector<std::byte> messageOf(const WorkerRequest& request)
{
    Writer writer(WorkerRequest::bytes);
    writer.put(version);
    writer.put(number(request.action));
    writer.put(number(request.settings.resizeMode));
    writer.put(request.settings.maximumPixels);
    writer.put(number(request.settings.outputFormat));
    writer.put(request.settings.quality);
    writer.put(request.settings.optimizeColorForSharing);
    writer.put(request.settings.removeColorManagement);
    writer.put(request.settings.removeMetadata);
    writer.put(request.typeIdentifier, longestType);
    writer.put(request.part.width);
    writer.put(request.part.height);
    writer.put(request.part.left);
    writer.put(request.part.top);
    writer.put(request.part.columns);
    writer.put(request.part.rows);
    writer.put(request.processors);
    return std::move(writer).bytes();
}

std::optional<WorkerRequest> requestIn(std::span<const std::byte> message)
{
    Reader reader(message);
    if (message.size() != WorkerRequest::bytes || reader.take<std::uint32_t>() != version)
        return std::nullopt;
    WorkerRequest request;
    request.action = reader.takeCase(WorkerAction::close);
    request.settings.resizeMode = reader.takeCase(ResizeMode::none);
    request.settings.maximumPixels = reader.take<std::int64_t>();
    request.settings.outputFormat = reader.takeCase(OutputFormat::original);
    request.settings.quality = reader.take<double>();
    request.settings.optimizeColorForSharing = reader.takeBool();
    request.settings.removeColorManagement = reader.takeBool();
    request.settings.removeMetadata = reader.takeBool();
    request.typeIdentifier = reader.takeText(longestType);
    request.part.width = reader.take<std::int32_t>();
    request.part.height = reader.take<std::int32_t>();
    request.part.left = reader.take<std::int32_t>();
    request.part.top = reader.take<std::int32_t>();
    request.part.columns = reader.take<std::int32_t>();
    request.part.rows = reader.take<std::int32_t>();
    request.processors = reader.take<std::uint8_t>();
    if (!reader.isSound() || request.processors == 0) return std::nullopt;
    return request;
}

std::vector<std::byte> messageOf(const WorkerReply& reply)
{
    Writer writer(WorkerReply::bytes);
    writer.put(version);
    writer.put(numberOf(reply.error));
    writer.put(reply.error ? reply.error->reason : std::string(), longestReason);
    writer.put(reply.head.typeIdentifier, longestType);
    writer.put(reply.head.memoryNeed);
    writer.put(reply.head.keepsFrame);
    writer.put(reply.size.first);
    writer.put(reply.size.second);
    writer.put(reply.answer);
    const std::size_t losses = std::min(reply.losses.size(), mostLosses);
    writer.put(static_cast<std::uint8_t>(losses));
    for (std::size_t i = 0; i < losses; ++i)
        writer.put(reply.losses[i], longestLoss);
    writer.put(printable(reply.profile), longestProfile);
    return std::move(writer).bytes();
}

std::optional<WorkerReply> replyIn(std::span<const std::byte> message)
{
    Reader reader(message);
    if (message.size() != WorkerReply::bytes || reader.take<std::uint32_t>() != version) return std::nullopt;
    WorkerReply reply;
    const auto error = reader.take<std::uint8_t>();
    std::string reason = reader.takeText(longestReason);
    if (error > number(WorkError::Kind::notStarted) + 1) return std::nullopt;
    if (error > 0) reply.error = WorkError{static_cast<WorkError::Kind>(error - 1), std::move(reason)};
    reply.head.typeIdentifier = reader.takeText(longestType);
    reply.head.memoryNeed = reader.take<std::int64_t>();
    reply.head.keepsFrame = reader.takeBool();
    reply.size.first = reader.take<std::int64_t>();
    reply.size.second = reader.take<std::int64_t>();
    reply.answer = reader.takeBool();
    const auto losses = reader.take<std::uint8_t>();
    if (losses > mostLosses || reply.head.memoryNeed < 0) return std::nullopt;
    for (std::size_t i = 0; i < losses; ++i)
        reply.losses.push_back(reader.takeText(longestLoss));
    reply.profile = reader.takeText(longestProfile);
    if (!reader.isSound()) return std::nullopt;
    return reply;
}

} // namespace lumora::ImageOptimizer
