// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/batch_outcome.h"

#include "history/undo.h"
#include "records/errors.h"

#include <QStringList>

namespace lumora {

bool isSkipped(const ProcessingResult& result)
{
    static const std::string skipped = ImageOptimizerError::overwriteDeclined().errorDescription();
    return !result.isSuccess &&
           (result.message == skipped || isLeftAlone(result) || isTakenBack(result.message));
}

bool isLeftAlone(const ProcessingResult& result)
{
    static const std::string optimized = LeftAlone::alreadyOptimized().what();
    static const std::string notSmaller = LeftAlone::notSmaller().what();
    return !result.isSuccess && (result.message == optimized || result.message == notSmaller);
}

bool isFailed(const ProcessingResult& result)
{
    return !result.isSuccess && !isSkipped(result);
}

bool isTakenBack(std::string_view message)
{
    return message.starts_with(undoneWord);
}

bool isOfUndo(const ProcessingResult& result)
{
    const bool isLeft = result.message.starts_with(leftWord) || result.message.starts_with(outputLeftWord);
    return result.isSuccess ? isLeft : isTakenBack(result.message);
}

void BatchOutcome::add(const ProcessingResult& result)
{
    if (lumora::isOfUndo(result)) {
        ++(result.isSuccess ? notUndone : undone);
        return;
    }
    ++(result.isSuccess ? succeeded : isSkipped(result) ? skipped : failed);
}

QString BatchOutcome::text() const
{
    if (failed == 0 && skipped == 0 && leftOut == 0 && !isOfUndo()) return {};
    QStringList parts;
    const auto add = [&parts](int count, const char* what) {
        if (count > 0) parts << QString::number(count) + u' ' + QLatin1String(what);
    };
    add(succeeded, "optimized");
    add(failed, "failed");
    add(skipped, "skipped");
    add(undone, "undone");
    add(notUndone, notUndone == 1 ? "left as it is" : "left as they are");
    add(leftOut, "left out");
    return parts.join(QStringLiteral(", "));
}

} // namespace lumora
