// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/panels/overwrite_questions.h"

#include "model/processing_model.h"

namespace lumora {

OverwriteQuestions::OverwriteQuestions(Ask ask, QObject* parent) : QObject(parent), m_ask(std::move(ask)) {}

void OverwriteQuestions::follow(ProcessingModel& model)
{
    m_cancelBatch = [&model] { model.cancel(); };
    connect(&model, &ProcessingModel::isProcessingChanged, this, [this] { m_forRemaining.reset(); });
}

bool OverwriteQuestions::confirm(const std::filesystem::path& output)
{
    if (m_forRemaining) return *m_forRemaining;
    const OverwriteAnswer answer = m_ask(output);
    const bool replaces = answer.choice == OverwriteAnswer::Choice::replace;
    if (answer.forRemaining) m_forRemaining = replaces;
    if (answer.choice == OverwriteAnswer::Choice::cancelBatch && m_cancelBatch) m_cancelBatch();
    return replaces;
}

} // namespace lumora
