// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "noted_drafts.h"

#include <sys/stat.h>
#include <unistd.h>

namespace lumora {
namespace {

bool isOwnDraft(const std::filesystem::path& file)
{
    struct stat status = {};
    return file.filename().native().starts_with(draftPrefix) && ::lstat(file.c_str(), &status) == 0 &&
           S_ISREG(status.st_mode) && status.st_uid == ::geteuid();
}

} // namespace

void removeNotedDrafts(const std::filesystem::path& folder)
{
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (!entry->path().native().ends_with(draftNoteSuffix)) continue;
        std::error_code unreadable;
        const auto draft = std::filesystem::read_symlink(entry->path(), unreadable);
        if (!unreadable && isOwnDraft(draft)) ::unlink(draft.c_str());
    }
}

} // namespace lumora
