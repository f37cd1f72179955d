// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The outputs of one batch kept apart: every input keeps its picture, and no output takes the place of a file
// that the batch still has to read. Decided before a worker starts, so that it does not depend on who
// finishes first. A value without changes; any thread.
#pragma once

#include "records/optimizer_settings.h"

#include <filesystem>
#include <functional>
#include <stop_token>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace lumora::ImageOptimizer {

class BatchNames
{
public:
    // Of a file by itself.
    BatchNames() = default;

    // Of several outputs with one name, the first input's keeps it; each further one, and each whose name is
    // that of an input, gets the lowest number from 2 on that is no other's of the batch and, where existing
    // files are replaced without a question, under which nothing stands. So does one whose name has what is
    // left of another picture. Asks the disk about every input; a stop leaves the rest as by itself.
    // Where folders are kept, `dropped` names those to keep the trees below of. An input that `leaves` (may
    // be null) names has no output and is in nobody's way.
    BatchNames(const std::vector<std::filesystem::path>& inputs, const OptimizerSettings& settings,
               const std::stop_token& stop = {}, const std::vector<std::filesystem::path>& dropped = {},
               const std::function<bool(const std::filesystem::path&)>& leaves = nullptr);

    bool isLeftAlone(const std::filesystem::path& input) const;

    // Where the output goes when not to the path that it would have by itself, else null. `input` is spelled
    // as in the batch.
    const std::filesystem::path* otherOutputOf(const std::filesystem::path& input) const;

    // Whether `output` is what was decided for the input. It is not when the input, or what links lead to,
    // was exchanged meanwhile: then the path may be any other's. By itself, a file may go anywhere.
    bool isDecided(const std::filesystem::path& input, const std::filesystem::path& output) const;

    // Whether another input of the batch is the same file under a further name, for which it has to stay.
    bool isAlsoAnother(const std::filesystem::path& input) const;

private:
    std::unordered_set<std::string> m_leftAlone;
    std::unordered_map<std::string, std::filesystem::path> m_otherOutputs;
    std::unordered_set<std::string> m_alsoOthers;
    std::unordered_set<std::size_t> m_decided; // a number for each pair: the paths take ten times the memory
    bool m_isOfBatch = false;
};

} // namespace lumora::ImageOptimizer
