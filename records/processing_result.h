// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What became of one input file: the record that the engine hands back, the list shows and the statistics add
// up. Savings and shares are derived by whoever shows them. A value.
#pragma once

#include "records/uuid.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>

namespace lumora {

struct ProcessingResult
{
    ProcessingResult(std::filesystem::path source, std::optional<std::filesystem::path> output,
                     std::int64_t bytesBefore, std::int64_t bytesAfter, std::string text, bool success)
        : sourceURL(std::move(source)), outputURL(std::move(output)), originalBytes(bytesBefore),
          outputBytes(bytesAfter), message(std::move(text)), isSuccess(success)
    {
    }

    Uuid id = Uuid::random(); // the row's identity: equal arguments still make distinct rows
    std::filesystem::path sourceURL;
    std::optional<std::filesystem::path> outputURL; // absent when nothing was written
    std::int64_t originalBytes;
    std::int64_t outputBytes; // 0 when nothing was written
    std::string message;
    bool isSuccess;
};

} // namespace lumora
