// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The overwrite questions of one batch after another: an answer that is given for the remaining files is
// remembered until their batch ends. Main thread.
#pragma once

#include "app/panels/overwrite_question.h"

#include <QObject>

#include <filesystem>
#include <functional>
#include <optional>

namespace lumora {

class ProcessingModel;

class OverwriteQuestions : public QObject
{
public:
    using Ask = std::function<OverwriteAnswer(const std::filesystem::path&)>;

    explicit OverwriteQuestions(Ask ask, QObject* parent = nullptr);

    // Forgets with the end of each batch of this model, and cancels its batch when the user says so.
    void follow(ProcessingModel& model);

    // True replaces the file.
    bool confirm(const std::filesystem::path& output);

private:
    const Ask m_ask;
    std::optional<bool> m_forRemaining;
    std::function<void()> m_cancelBatch;
};

} // namespace lumora
