// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/image_optimizer.h"

#include "engine/destination_properties.h"
#include "engine/file_attributes.h"
#include "engine/image_transform.h"
#include "engine/left_behind.h"
#include "engine/output_path.h"
#include "engine/output_plan.h"
#include "engine/webp_encoder.h"
#include "formats/image_destination.h"
#include "formats/image_source.h"
#include "pixels/drawing.h"
#include "records/errors.h"
#include "system/byte_count_text.h"
#include "system/file_services.h"

#include <new>
#include <string>
#include <vector>

namespace lumora::ImageOptimizer {
namespace {

constexpr std::string_view trashWarning = "Original could not be moved to Trash";

// What one file needs at every stage.
struct Job
{
    const std::filesystem::path& input;
    const OptimizerSettings& settings;
    const OptimizerServices& services;
};

ImageSource openSource(const Job& job)
{
    auto source = ImageSource::open(job.input);
    if (!source) throw ImageOptimizerError::unreadableImage();
    return std::move(*source);
}

// The whole decode: turning, reducing and recolouring run as one pass over the file, so that damage anywhere
// in it is known before anything at the output path is touched.
Image finalImage(const Job& job, const ImageSource& source)
try {
    const Image transformed = transformedImage(orientedImage(source, source.image()), job.settings);
    auto decoded = decode(transformed);
    if (!decoded) throw ImageOptimizerError::unreadableImage();
    return job.settings.removeColorManagement ? decoded->withoutProfile() : *decoded;
} catch (const std::bad_alloc&) {
    throw ImageOptimizerError::unreadableImage();
}

bool mayReplace(const Job& job, const OutputPlan& output)
{
    return !job.settings.warnBeforeOverwrite || job.services.confirmOverwrite(output.path);
}

// What the answer allows. A file that nobody was asked about because it was not there yet is kept.
ExistingFile permissionFor(const Job& job, const OutputPlan& output)
{
    if (output.isTaken && !mayReplace(job, output)) throw ImageOptimizerError::overwriteDeclined();
    return output.isTaken || !job.settings.warnBeforeOverwrite ? ExistingFile::replace : ExistingFile::keep;
}

AtomicFile encodeWithPlatform(const Job& job, const ImageSource& source, const Image& image,
                              const OutputPlan& plan)
{
    const std::filesystem::path& output = plan.path;
    auto destination = ImageDestination::create(output, plan.typeIdentifier);
    if (!destination) throw ImageOptimizerError::cannotCreateDestination(output);
    destination->addImage(image, destinationProperties(job.settings, source.metadata()));
    auto encoded = destination->finalize();
    if (!encoded) throw ImageOptimizerError::cannotFinalize(output);
    return std::move(*encoded);
}

AtomicFile encode(const Job& job, const ImageSource& source, const Image& image, const OutputPlan& output)
{
    if (isWebP(job.settings.outputFormat))
        return encodeWebPWithCWebP(image, output.path, job.settings, source.metadata(), job.services.stop);
    return encodeWithPlatform(job, source, image, output);
}

bool decodesTo(const Image& image, const std::filesystem::path& file)
{
    const auto written = ImageSource::open(file);
    if (!written || written->image().width() != image.width() || written->image().height() != image.height())
        return false;
    return static_cast<bool>(decode(written->image()));
}

// Where something else is given up for the output, nobody's word is enough.
void checkWhole(const Job& job, const OutputPlan& output, const Image& image, const AtomicFile& encoded)
{
    if ((output.isTaken || job.settings.moveOriginalToTrash) && !decodesTo(image, encoded.draft()))
        throw ImageOptimizerError::cannotFinalize(output.path, "the new file cannot be read");
}

// Only now does an older output give way, to a whole new one. Who may not see the original may not see the
// output.
void putInPlace(const Job& job, const OutputPlan& output, AtomicFile& encoded, ExistingFile permission)
{
    if (const auto bits = filePermissions(job.input)) encoded.setPermissions(*bits);
    auto placed = encoded.commit(permission);
    if (!placed && encoded.isTaken()) {
        if (!mayReplace(job, output)) throw ImageOptimizerError::overwriteDeclined();
        placed = encoded.commit(ExistingFile::replace);
    }
    if (!placed) throw PlatformError(placed.error().description);
}

bool isUntouched(const Job& job, const ImageSource& source)
{
    return source.stamp() && fileStamp(job.input) == source.stamp();
}

// False when the original should have gone to the Trash and did not. It goes only when a power cut could no
// longer take the output.
bool disposeOfOriginal(const Job& job, const ImageSource& source, const std::filesystem::path& output)
{
    if (!job.settings.moveOriginalToTrash || isSameFile(job.input, output)) return true;
    if (job.services.names->isAlsoAnother(job.input)) return false;
    if (!syncFile(output) || !isUntouched(job, source)) return false;
    return static_cast<bool>(job.services.moveToTrash(job.input));
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
{
    const Job job{input, settings, services};
    const std::int64_t originalBytes = fileSize(input);
    const ImageSource source = openSource(job);
    const Image image = finalImage(job, source);

    const OutputPlan planned = plan(input, source, settings, *services.names);
    const ExistingFile permission = permissionFor(job, planned);
    AtomicFile encoded = encode(job, source, image, planned);
    checkWhole(job, planned, image, encoded);
    const auto losses = leftBehind(source, image, planned.typeIdentifier, encoded.draft(), settings);
    putInPlace(job, planned, encoded, permission);
    const std::filesystem::path& output = planned.path;

    if (settings.preserveModificationTime) preserveModificationDate(input, output);
    const bool isOriginalDisposedOf = disposeOfOriginal(job, source, output);
    const std::int64_t outputBytes = fileSize(output);
    return {input,
            output,
            originalBytes,
            outputBytes,
            messageFor(originalBytes - outputBytes, isOriginalDisposedOf, losses),
            true};
}

} // namespace lumora::ImageOptimizer
