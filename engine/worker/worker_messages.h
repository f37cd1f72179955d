// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What a program and its worker tell each other: one request, one reply, each of one fixed size. Neither side
// believes the other: what does not make sense is no message. A file comes along where a request is about
// one. Any thread.
#pragma once

#include "engine/picture_work.h"
#include "records/optimizer_settings.h"
#include "system/file_descriptor.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace lumora::ImageOptimizer {

// The calls of PictureWork.
enum class WorkerAction : std::uint8_t {
    open,
    proveReadable,
    encode,
    writePpm,
    copy,
    findDamage,
    losses,
    isWhole,
    look,
    drawPart,
    close
};

// Of the settings, those that pixels depend on.
struct PixelSettings
{
    ResizeMode resizeMode = ResizeMode::none;
    std::int64_t maximumPixels = 0;
    OutputFormat outputFormat = OutputFormat::original;
    double quality = 0;
    bool optimizeColorForSharing = false;
    bool removeColorManagement = false;
    bool removeMetadata = false;

    static PixelSettings of(const OptimizerSettings& settings);
    OptimizerSettings settings() const; // the others as they mean nothing
    bool operator==(const PixelSettings&) const = default;
};

struct WorkerRequest
{
    WorkerAction action = WorkerAction::close;
    PixelSettings settings = {};     // of `open`
    std::string typeIdentifier = {}; // of `encode` and `losses`
    PicturePart part = {};           // of `drawPart`
    std::uint8_t processors = 1;     // that the worker may keep busy, at least 1

    static constexpr std::size_t bytes = 128;
    bool operator==(const WorkerRequest&) const = default;
};

struct WorkerReply
{
    std::optional<WorkError> error = {};
    // Without an error, as far as the request asked for them.
    PictureHead head = {};
    PictureSize size = {};
    bool answer = false; // of `proveReadable`, `copy` and `isWhole`
    std::vector<std::string> losses = {};
    std::string profile = {}; // of `look`

    static constexpr std::size_t bytes = 4096;
};

// Texts that are too long lose their ends.
std::vector<std::byte> messageOf(const WorkerRequest& request);
std::vector<std::byte> messageOf(const WorkerReply& reply);
// Absent for what no program of this version would have written.
std::optional<WorkerRequest> requestIn(std::span<const std::byte> message);
std::optional<WorkerReply> replyIn(std::span<const std::byte> message);

} // namespace lumora::ImageOptimizer
