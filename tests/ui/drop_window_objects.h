// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Everything behind a drop window, with an optimizer that answers as it is told and no file on any disk.
#pragma once

#include "history/history.h"
#include "model/processing_model.h"
#include "tests/app/wait_for.h"
#include "tests/ui/model_objects.h"
#include "ui/dropwindow/drop_window_view.h"

#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>

namespace lumora::test {

struct DropWindowObjects : ModelObjects
{
    using Path = std::filesystem::path;

    ~DropWindowObjects() { letWorkersGo(); }

    std::unique_ptr<DropWindowView> makeView(bool reducesMotion = true)
    {
        return std::make_unique<DropWindowView>(
            settings, model, stats, [this] { ++preferencesOpened; },
            FileBrowser{[this](const Path& file) { shown.push_back(file); },
                        [this](const Path& file) { opened.push_back(file); }},
            [reducesMotion] { return reducesMotion; },
            [this](QWidget*, const ChosenFiles& answer) { answer(chosen); });
    }

    void addSuccess(const Path& source, std::int64_t before, std::int64_t after, const std::string& message)
    {
        add({source, Path(source).replace_extension(".webp"), before, after, message, true});
    }
    void addFailure(const Path& source, const std::string& message)
    {
        add({source, std::nullopt, 0, 0, message, false});
    }
    // Runs a batch of one file to its end.
    void add(const ProcessingResult& result)
    {
        answers.insert_or_assign(result.sourceURL, result);
        const int before = model.resultCount();
        model.process({result.sourceURL});
        waitFor([&] { return model.resultCount() == before + 1 && !model.isProcessing(); });
    }
    // Starts a batch and stops it in the middle, until the objects end.
    void runUntil(int completed, int total)
    {
        std::vector<Path> files;
        files.reserve(static_cast<std::size_t>(total));
        for (int i = 0; i < total; ++i)
            files.emplace_back("/photos/picture-" + std::to_string(i) + ".jpg");
        allowed = completed;
        model.process(files);
        waitFor([&] { return model.completedCount() == completed && model.totalCount() == total; });
    }
    void letWorkersGo()
    {
        {
            const std::lock_guard lock(mutex);
            allowed = 1 << 30;
        }
        go.notify_all();
    }

    ProcessingServices services()
    {
        ProcessingServices fakes;
        fakes.optimize = [this](const Path& file, const OptimizerSettings&, const OptimizerServices&) {
            std::unique_lock lock(mutex);
            go.wait(lock, [this] { return allowed > 0; });
            --allowed;
            const auto answer = answers.find(file);
            if (answer != answers.end()) return answer->second;
            return ProcessingResult(file, Path(file).replace_extension(".webp"), 2'000'000, 500'000,
                                    "Optimized", true);
        };
        fakes.expand = [this](const std::vector<Path>& items, const std::stop_token&) {
            const std::lock_guard lock(mutex);
            expanded.push_back(items);
            return items;
        };
        fakes.requestSaveAccess = [](const Path& requested) { return requested; };
        fakes.history = [this] { return history; };
        fakes.debounce = std::chrono::milliseconds(0);
        return fakes;
    }

    std::shared_ptr<History> history; // where a test remembers
    std::mutex mutex;
    std::condition_variable go;
    int allowed = 1 << 30;
    std::map<Path, ProcessingResult> answers;
    std::vector<std::vector<Path>> expanded;

    int preferencesOpened = 0;
    std::vector<Path> shown;
    std::vector<Path> opened;
    std::vector<Path> chosen;

    OptimizerSettings snapshot() const
    {
        return {.resizeMode = ResizeMode::none,
                .maximumPixels = 2560,
                .outputFormat = OutputFormat::webp,
                .quality = 82,
                .optimizeColorForSharing = true,
                .removeColorManagement = true,
                .removeMetadata = true,
                .destinationMode = DestinationMode::originalLocation,
                .destinationFolderURL = std::nullopt,
                .filenamePrefix = {},
                .filenameSuffix = {},
                .moveOriginalToTrash = false,
                .preserveModificationTime = true,
                .warnBeforeOverwrite = false};
    }

    ProcessingModel model{[this] { return snapshot(); }, &stats, services()};
};

} // namespace lumora::test
