// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What either side of a worker's channel may send: what is taken for a message says the same when it is sent
// on.
#include "engine/worker/worker_messages.h"
#include "fuzz/fuzzing.h"

#include <algorithm>

using namespace lumora::ImageOptimizer;

namespace {

using lumora::fuzz::require;

// Short inputs are filled up, since every message has one size.
std::vector<std::byte> filledUp(std::span<const std::byte> bytes, std::size_t size)
{
    std::vector<std::byte> message(size);
    std::copy_n(bytes.begin(), std::min(bytes.size(), size), message.begin());
    return message;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto bytes = std::as_bytes(std::span(data, size));
    if (const auto request = requestIn(filledUp(bytes, WorkerRequest::bytes)))
        require(messageOf(*requestIn(messageOf(*request))) == messageOf(*request));
    if (const auto reply = replyIn(filledUp(bytes, WorkerReply::bytes))) {
        require(reply->head.memoryNeed >= 0);
        require(messageOf(*replyIn(messageOf(*reply))) == messageOf(*reply));
    }
    require(!requestIn(bytes) || size == WorkerRequest::bytes);
    return 0;
}
