// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/image_optimizer.h"

#include "engine/batch_outputs.h"
#include "engine/destination_properties.h"
#include "engine/file_attributes.h"
#include "engine/left_behind.h"
#include "engine/opened_picture.h"
#include "engine/output_path.h"
#include "engine/output_plan.h"
#include "engine/webp_encoder.h"
#include "formats/image_destination.h"
#include "formats/image_source.h"
#include "pixels/decoding.h"
#include "records/errors.h"
#include "system/byte_count_text.h"
#include "system/file_services.h"
#include "system/only_copy.h"

#include <exception>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace lumora::ImageOptimizer {
namespace {

constexpr std::string_view trashWarning = "Original could not be moved to Trash";

using PictureSize = std::pair<std::int64_t, std::int64_t>;

PictureSize sizeOf(const Image& image)
{
    return {image.width(), image.height()};
}

bool mayReplace(const Job& job, const OutputPlan& output)
{
    return !job.settings.warnBeforeOverwrite || job.services.confirmOverwrite(output.path);
}

// Damage in the input is told before anything about the output.
OutputPlan planFor(const Job& job, OpenedPicture& picture)
try {
    return plan(job.input, picture.source(), job.settings, *job.services.names);
} catch (const std::exception&) {
    picture.blameInput();
    throw;
}

// What the answer allows. A file that was not there yet is kept for now.
ExistingFile permissionFor(const Job& job, const OutputPlan& output, OpenedPicture& picture)
{
    if (output.isTaken && job.settings.warnBeforeOverwrite) {
        picture.proveReadable();
        if (!mayReplace(job, output)) throw ImageOptimizerError::overwriteDeclined();
        picture.openAgain();
    }
    return output.isTaken ? ExistingFile::replace : ExistingFile::keep;
}

AtomicFile encodeWithPlatform(const Job& job, const OpenedPicture& picture, const OutputPlan& plan)
{
    const std::filesystem::path& output = plan.path;
    auto destination = ImageDestination::create(output, plan.typeIdentifier);
    if (!destination) throw ImageOptimizerError::cannotCreateDestination(output);
    destination->addImage(picture.image(), destinationProperties(job.settings, picture.source().metadata()));
    auto encoded = destination->finalize();
    if (!encoded && encoded.error().cause == Error::Cause::memory) throw PlatformError::notEnoughMemory();
    if (!encoded) throw ImageOptimizerError::cannotFinalize(output, encoded.error().reason);
    return std::move(*encoded);
}

AtomicFile encode(const Job& job, const OutputPlan& output, OpenedPicture& picture)
try {
    if (isWebP(job.settings.outputFormat))
        return encodeWebPWithCWebP(picture.image(), output.path, job.settings, picture.source().metadata(),
                                   job.services.stop);
    return encodeWithPlatform(job, picture, output);
} catch (const ImageOptimizerError&) {
    picture.blameInput();
    throw;
}

bool decodesTo(PictureSize size, const std::filesystem::path& file)
{
    const auto written = ImageSource::open(file);
    return written && size == sizeOf(written->image()) && readThrough(written->image());
}

// Where something else is given up for the output, nobody's word is enough.
void checkWhole(const OutputPlan& output, PictureSize size, const AtomicFile& encoded)
{
    if (!decodesTo(size, encoded.draft()))
        throw ImageOptimizerError::cannotFinalize(output.path, "the new file cannot be read");
}

// Only now does an older output give way, to a whole new one; one that nobody knew of does as at the start.
// Who may not see the original may not see the output.
void putInPlace(const Job& job, const OutputPlan& output, PictureSize size, AtomicFile& encoded,
                ExistingFile permission)
{
    // What is left of another picture goes only where its owner says so.
    if (!job.settings.warnBeforeOverwrite && isOnlyCopyOfAnother(output.path, job.input))
        throw ImageOptimizerError::overwriteDeclined();
    if (const auto bits = filePermissions(job.input)) encoded.setPermissions(*bits);
    const auto place = [&](ExistingFile existing) {
        const auto& outputs = job.services.outputs;
        return outputs ? outputs->place(encoded, output.path, existing) : encoded.commit(existing);
    };
    auto placed = place(permission);
    if (!placed && encoded.isTaken()) {
        if (!mayReplace(job, output)) throw ImageOptimizerError::overwriteDeclined();
        checkWhole(output, size, encoded);
        placed = place(ExistingFile::replace);
    }
    if (!placed && encoded.isTaken()) throw ImageOptimizerError::overwriteDeclined();
    if (!placed) throw PlatformError(placed.error().description);
}

// False when the original should have gone to the Trash and did not. It goes only when a power cut could no
// longer take the output, and only as the file that was read.
bool disposeOfOriginal(const Job& job, const std::optional<FileStamp>& read,
                       const std::filesystem::path& output)
{
    if (!job.settings.moveOriginalToTrash || isSameFile(job.input, output)) return true;
    if (job.services.names->isAlsoAnother(job.input) || !read) return false;
    markAsOnlyCopy(output, *read);
    const bool isDisposedOf =
        syncFile(output) && fileStamp(job.input) == read && job.services.moveToTrash(job.input);
    if (!isDisposedOf) unmarkAsOnlyCopy(output);
    return isDisposedOf;
}

std::string messageFor(std::int64_t saved, bool isOriginalDisposedOf, const std::vector<std::string>& losses)
{
    std::string message = saved > 0 ? "Saved " + byteCountText(saved) : "Converted";
    if (!isOriginalDisposedOf) message.append(". ").append(trashWarning);
    for (const std::string& loss : losses)
        message.append(". ").append(loss);
    return message;
}

} // namespace

ProcessingResult optimize(const std::filesystem::path& input, const OptimizerSettings& settings,
                          const OptimizerServices& services)
try {
    const Job job{input, settings, services};
    const std::int64_t originalBytes = fileSize(input);
    OpenedPicture picture(job);
    const OutputPlan planned = planFor(job, picture);
    const ExistingFile permission = permissionFor(job, planned, picture);
    AtomicFile encoded = encode(job, planned, picture);

    const PictureSize size = sizeOf(picture.image());
    const std::optional<FileStamp> read = picture.source().stamp();
    const auto losses =
        leftBehind(picture.source(), picture.image(), planned.typeIdentifier, encoded.draft(), settings);
    picture.closeButShare();
    if (planned.isTaken || settings.moveOriginalToTrash) checkWhole(planned, size, encoded);
    picture.close();
    putInPlace(job, planned, size, encoded, permission);
    const std::filesystem::path& output = planned.path;

    if (settings.preserveModificationTime) preserveModificationDate(input, output);
    const bool isOriginalDisposedOf = disposeOfOriginal(job, read, output);
    const std::int64_t outputBytes = fileSize(output);
    return {input,
            output,
            originalBytes,
            outputBytes,
            messageFor(originalBytes - outputBytes, isOriginalDisposedOf, losses),
            true};
} catch (const std::bad_alloc&) {
    throw PlatformError::notEnoughMemory();
}

} // namespace lumora::ImageOptimizer
