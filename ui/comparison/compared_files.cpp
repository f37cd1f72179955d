// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/comparison/compared_files.h"

#include "system/file_services.h"
#include "system/trash_search.h"

namespace lumora {
namespace {

PictureFile inTrash(const std::filesystem::path& path, const QString& reason)
{
    auto trashed = findInTrash(path);
    if (!trashed) return {.path = std::nullopt, .reason = reason};
    return {.path = std::move(trashed), .isInTrash = true};
}

} // namespace

PictureFile findOriginal(const ProcessingResult& result)
{
    const std::filesystem::path& source = result.sourceURL;
    if (result.outputURL == source)
        return inTrash(source, QStringLiteral("The output took the place of the original, "
                                              "which is not in the Trash."));
    if (!fileExists(source))
        return inTrash(source, QStringLiteral("The original is no longer in its folder, nor in the Trash."));
    // Another file may have taken the name of an original that was thrown away.
    if (fileSize(source) != result.originalBytes) {
        if (PictureFile trashed = inTrash(source, {});
            fileSize(trashed.path.value_or(source)) == result.originalBytes)
            return trashed;
    }
    return {.path = source};
}

PictureFile findOutput(const ProcessingResult& result)
{
    if (!result.outputURL) return {.path = std::nullopt, .reason = QStringLiteral("No output was written.")};
    if (fileExists(*result.outputURL)) return {.path = result.outputURL};
    return inTrash(*result.outputURL,
                   QStringLiteral("The output is no longer in its folder, nor in the Trash."));
}

} // namespace lumora
