// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/smaller_output.h"

#include "engine/output_path.h"
#include "records/errors.h"
#include "system/regular_file.h"

#include <limits>
#include <optional>
#include <utility>

namespace lumora::ImageOptimizer {
namespace {

std::int64_t sizeOf(const AtomicFile& file)
{
    const auto stamp = fileStamp(file.descriptor());
    return stamp ? stamp->size : std::numeric_limits<std::int64_t>::max();
}

// Beside the original there is a picture already.
bool isCopyOfUse(const Job& job, const OutputPlan& output)
{
    return job.settings.destinationMode != DestinationMode::originalLocation &&
           !isSameFile(job.input.parent_path(), output.path.parent_path());
}

// Nothing else makes a copy smaller than its original.
bool leavesSomethingOut(const OptimizerSettings& settings)
{
    return settings.removeMetadata || settings.removeColorManagement;
}

std::optional<AtomicFile> copyOf(const OutputPlan& output, OpenedPicture& picture)
{
    auto file = AtomicFile::create(output.path);
    if (!file) throw ImageOptimizerError::cannotCreateDestination(output.path);
    const auto isCopied = picture.copy(*file);
    if (!isCopied) throw ImageOptimizerError::cannotFinalize(output.path, isCopied.error().reason);
    if (!*isCopied) return std::nullopt;
    return std::move(*file);
}

} // namespace

FinishedOutput finishedOutput(const Job& job, const OutputPlan& output, OpenedPicture& picture,
                              AtomicFile encoded, std::int64_t originalBytes)
{
    const bool mustDiffer = !picture.keepsFrame() || picture.typeIdentifier() != output.typeIdentifier;
    if (!job.settings.onlySmaller || mustDiffer) return {std::move(encoded)};
    const bool isSmaller = sizeOf(encoded) < originalBytes;
    if (isCopyOfUse(job, output) && (!isSmaller || leavesSomethingOut(job.settings))) {
        auto copy = copyOf(output, picture);
        if (copy && sizeOf(*copy) <= sizeOf(encoded)) return {std::move(*copy), true};
    }
    if (!isSmaller) throw LeftAlone::notSmaller();
    return {std::move(encoded)};
}

} // namespace lumora::ImageOptimizer
