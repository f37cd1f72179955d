// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/batch_names.h"

#include "engine/kept_folders.h"
#include "engine/output_naming.h"
#include "engine/output_path.h"
#include "engine/places.h"
#include "system/file_services.h"
#include "system/only_copy.h"
#include "system/regular_file.h"
#include "types/format.h"

#include <cstdint>
#include <map>
#include <optional>
#include <utility>

namespace lumora::ImageOptimizer {
namespace {

using FileId = std::pair<std::uint64_t, std::uint64_t>; // device and inode

std::optional<FileId> idOf(const std::filesystem::path& file)
{
    const auto stamp = fileStamp(file);
    if (!stamp) return std::nullopt;
    return FileId(stamp->device, stamp->inode);
}

// Where a picture's bytes lie, whatever links lead there.
std::string resolved(Places& places, const std::filesystem::path& file)
{
    std::error_code missing;
    return places.of(std::filesystem::canonical(file, missing));
}

class Inputs
{
public:
    explicit Inputs(Places& places) : m_places(places) {}

    void add(const std::filesystem::path& input)
    {
        m_occupied.insert(m_places.of(input));
        if (const auto id = idOf(input)) m_names[*id].push_back(&input);
    }

    bool isOneOf(const std::filesystem::path& output) const
    {
        if (m_occupied.contains(m_places.of(output))) return true;
        const auto id = idOf(output);
        return id && m_names.contains(*id);
    }

    // Those that lie where a further name leads. A second link of equal right is not among them: it stays
    // when the first goes.
    template <class Report>
    void forEachShared(Report report) const
    {
        for (const auto& [id, names] : m_names) {
            if (names.size() < 2) continue;
            std::unordered_map<std::string, std::size_t> roads;
            for (const auto* name : names)
                ++roads[resolved(m_places, *name)];
            for (const auto* name : names) {
                const std::string place = m_places.of(*name);
                const std::size_t own = resolved(m_places, *name) == place ? 1 : 0;
                if (roads[place] > own) report(*name);
            }
        }
    }

private:
    Places& m_places;
    std::unordered_set<std::string> m_occupied;
    std::map<FileId, std::vector<const std::filesystem::path*>> m_names;
};

// Known without a look into the file unless its own format stays.
std::optional<std::string> typeOf(const std::filesystem::path& input, const OptimizerSettings& settings)
{
    if (settings.outputFormat != OutputFormat::original) return std::nullopt;
    const Format* const format = formatOfFile(input);
    if (!format) return std::nullopt;
    return std::string(format->identifier);
}

std::size_t numberOf(const std::filesystem::path& input, const std::filesystem::path& output)
{
    return std::hash<std::string>()(input.native() + '\0' + output.native());
}

} // namespace

BatchNames::BatchNames(const std::vector<std::filesystem::path>& inputs, const OptimizerSettings& settings,
                       const std::stop_token& stop, const std::vector<std::filesystem::path>& dropped,
                       const std::function<bool(const std::filesystem::path&)>& leaves)
{
    Places places;
    Inputs known(places);
    for (const auto& input : inputs) {
        if (stop.stop_requested()) return;
        if (leaves && leaves(input))
            m_leftAlone.insert(input.native());
        else
            known.add(input);
    }
    // Without a folder to go to, each file says so itself.
    if (settings.destinationMode == DestinationMode::selectedFolder && !settings.destinationFolderURL) return;
    std::unordered_set<std::string> taken;
    const auto take = [&](const std::filesystem::path& input, const std::filesystem::path& output) {
        const bool isFree = !known.isOneOf(output) &&
                            (settings.warnBeforeOverwrite || !isOnlyCopyOfAnother(output, input)) &&
                            taken.insert(places.of(output)).second;
        if (isFree) m_decided.insert(numberOf(input, output));
        return isFree;
    };
    std::vector<std::pair<const std::filesystem::path*, std::filesystem::path>> unnamed;
    const KeptFolders folders(dropped, settings);
    for (const auto& input : inputs) {
        if (stop.stop_requested()) return;
        if (isLeftAlone(input)) continue;
        const std::filesystem::path below = folders.below(input);
        std::filesystem::path output = outputPath(input, typeOf(input, settings), settings, below);
        if (!take(input, output))
            unnamed.emplace_back(&input, std::move(output));
        else if (!below.empty())
            m_otherOutputs.emplace(input.native(), std::move(output));
    }
    // Nobody could foresee a name that was made up here, so that no stranger's file may stand under it unless
    // its owner is asked.
    const auto isOccupied = [&](const std::filesystem::path& output) {
        return !settings.warnBeforeOverwrite && fileExists(output);
    };
    std::unordered_map<std::string, int>
        lastNumbers; // so that a thousand files of one name do not count anew
    for (const auto& [input, output] : unnamed) {
        int& number = lastNumbers.try_emplace(places.of(output), 1).first->second;
        do {
            ++number;
        } while (isOccupied(numbered(output, number)) || !take(*input, numbered(output, number)));
        m_otherOutputs.emplace(input->native(), numbered(output, number));
    }
    m_isOfBatch = true;
    known.forEachShared([&](const std::filesystem::path& input) { m_alsoOthers.insert(input.native()); });
}

const std::filesystem::path* BatchNames::otherOutputOf(const std::filesystem::path& input) const
{
    const auto found = m_otherOutputs.find(input.native());
    return found == m_otherOutputs.end() ? nullptr : &found->second;
}

bool BatchNames::isLeftAlone(const std::filesystem::path& input) const
{
    return m_leftAlone.contains(input.native());
}

bool BatchNames::isDecided(const std::filesystem::path& input, const std::filesystem::path& output) const
{
    return !m_isOfBatch || m_decided.contains(numberOf(input, output));
}

bool BatchNames::isAlsoAnother(const std::filesystem::path& input) const
{
    return m_alsoOthers.contains(input.native());
}

} // namespace lumora::ImageOptimizer
