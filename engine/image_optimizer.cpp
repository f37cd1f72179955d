// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/image_optimizer.h"

#include "engine/batch_outputs.h"
#include "engine/file_attributes.h"
#include "engine/kept_folders.h"
#include "engine/opened_picture.h"
#include "engine/output_path.h"
#include "engine/output_plan.h"
#include "engine/replaced_output.h"
#include "engine/smaller_output.h"
#include "engine/trace_writer.h"
#include "engine/webp_encoder.h"
#include "records/errors.h"
#include "system/byte_count_text.h"
#include "system/file_services.h"
#include "system/only_copy.h"
#include "system/regular_file.h"

#include <exception>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace lumora::ImageOptimizer {
namespace {

constexpr std::string_view trashWarning = "Original could not be moved to Trash";

bool mayReplace(const Job& job, const OutputPlan& output)
{
    return !job.settings.warnBeforeOverwrite || job.services.confirmOverwrite(output.path);
}

// Damage in the input is told before anything about the output.
OutputPlan planFor(const Job& job, OpenedPicture& picture)
try {
    return plan(job.input, picture.typeIdentifier(), job.settings, *job.services.names);
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

AtomicFile encodeWithPlatform(const Job& job, OpenedPicture& picture, const OutputPlan& output)
{
    auto file = AtomicFile::create(output.path);
    if (!file) throw ImageOptimizerError::cannotCreateDestination(output.path);
    const auto size = picture.encode(*file, output.typeIdentifier);
    if (size) return std::move(*file);
    if (size.error().kind == WorkError::Kind::unsupported)
        throw ImageOptimizerError::unsupportedFormat(std::string(title(job.settings.outputFormat)));
    if (size.error().kind == WorkError::Kind::drawing)
        throw ImageOptimizerError::cannotCreateDestination(output.path);
    throw ImageOptimizerError::cannotFinalize(output.path, size.error().reason);
}

PpmMaker ppmMaker(OpenedPicture& picture)
{
    return [&picture](OutputFile& file) -> Result<PictureSize, PpmError> {
        const auto size = picture.writePpm(file);
        if (size) return *size;
        const bool isDrawn = size.error().kind == WorkError::Kind::writing;
        return PpmError{isDrawn ? PpmError::Step::writing : PpmError::Step::drawing, {size.error().reason}};
    };
}

AtomicFile encode(const Job& job, const OutputPlan& output, OpenedPicture& picture)
try {
    if (!isWebP(job.settings.outputFormat)) return encodeWithPlatform(job, picture, output);
    return encodeWebPWithCWebP(ppmMaker(picture), output.path, job.settings, job.services.stop);
} catch (const ImageOptimizerError& error) {
    if (error.kind() != ImageOptimizerError::Kind::unreadableImage) picture.blameInput();
    throw;
}

// Where it cannot be made, the output says so.
void makeFolderOf(const Job& job, const OutputPlan& output)
{
    const auto made = makeFolders(output.path.parent_path());
    if (job.services.trace) job.services.trace->madeFolders = made;
}

// Where something else is given up for the output, nobody's word is enough.
void checkWhole(const OutputPlan& output, OpenedPicture& picture, const AtomicFile& written)
{
    if (!picture.isWhole(written))
        throw ImageOptimizerError::cannotFinalize(output.path, "the new file cannot be read");
}

// Only now does an older output give way, to a whole new one; one that nobody knew of does as at the start.
// Who may not see the original may not see the output.
void putInPlace(const Job& job, const OutputPlan& output, OpenedPicture& picture, AtomicFile& written,
                ExistingFile permission)
{
    // What is left of another picture goes only where its owner says so.
    if (!job.settings.warnBeforeOverwrite && isOnlyCopyOfAnother(output.path, job.input))
        throw ImageOptimizerError::overwriteDeclined();
    if (const auto bits = filePermissions(job.input)) written.setPermissions(*bits);
    const auto place = [&](ExistingFile existing) {
        ReplacedOutput replaced(job, output.path);
        const auto makeRoom = [&replaced] { return replaced.makeRoom(); };
        const auto& outputs = job.services.outputs;
        const bool replaces = existing == ExistingFile::replace;
        Status status = outputs ? outputs->place(written, output.path, existing, makeRoom)
                                : written.commit(replaces ? makeRoom() : existing);
        replaced.settle(static_cast<bool>(status));
        return status;
    };
    auto placed = place(permission);
    if (!placed && written.isTaken()) {
        checkWhole(output, picture, written);
        picture.close();
        if (!mayReplace(job, output)) throw ImageOptimizerError::overwriteDeclined();
        placed = place(ExistingFile::replace);
    }
    if (!placed && written.isTaken()) throw ImageOptimizerError::overwriteDeclined();
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
    if (job.services.waitsForDisk) job.services.waitsForDisk();
    const bool isDisposedOf =
        job.services.disk->sync(output) && fileStamp(job.input) == read && trashOriginal(job);
    if (!isDisposedOf) unmarkAsOnlyCopy(output);
    return isDisposedOf;
}

std::string summaryOf(const FinishedOutput& finished, std::int64_t saved)
{
    if (finished.isCopy) return "Copied: the output would not be smaller";
    return saved > 0 ? "Saved " + byteCountText(saved) : "Converted";
}

std::string messageFor(const FinishedOutput& finished, std::int64_t saved, bool isOriginalDisposedOf,
                       const std::vector<std::string>& losses)
{
    const std::string summary = summaryOf(finished, saved);
    std::string message = summary;
    if (!isOriginalDisposedOf) message.append(". ").append(trashWarning);
    for (const std::string& loss : losses)
        message.append(". ").append(loss);
    // A sentence that stands alone.
    return finished.isCopy && message == summary ? summary + "." : message;
}

} // namespace

ProcessingResult optimize(const std::filesystem::path& input, const OptimizerSettings& settings,
                          const OptimizerServices& services)
try {
    const Job job{input, settings, services};
    if (services.names->isLeftAlone(input)) throw LeftAlone::alreadyOptimized();
    const std::int64_t originalBytes = fileSize(input);
    OpenedPicture picture(job);
    traceSource(job, picture.stamp());
    const OutputPlan planned = planFor(job, picture);
    const ExistingFile permission = permissionFor(job, planned, picture);
    if (settings.keepFolders) makeFolderOf(job, planned);
    FinishedOutput finished =
        finishedOutput(job, planned, picture, encode(job, planned, picture), originalBytes);

    const auto losses = picture.losses(finished.file, planned.typeIdentifier);
    if (planned.isTaken || settings.moveOriginalToTrash || finished.isCopy)
        checkWhole(planned, picture, finished.file);
    putInPlace(job, planned, picture, finished.file, permission);
    picture.close();
    const std::filesystem::path& output = planned.path;

    if (settings.preserveModificationTime) preserveModificationDate(input, output);
    traceOutput(job, output, finished.file.descriptor());
    const bool isOriginalDisposedOf = disposeOfOriginal(job, picture.stamp(), output);
    const std::int64_t outputBytes = fileSize(output);
    return {input,
            output,
            originalBytes,
            outputBytes,
            messageFor(finished, originalBytes - outputBytes, isOriginalDisposedOf, losses),
            true};
} catch (const std::bad_alloc&) {
    throw PlatformError::notEnoughMemory();
}

} // namespace lumora::ImageOptimizer
