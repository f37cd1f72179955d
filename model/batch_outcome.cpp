// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/batch_outcome.h"

#include "records/errors.h"

#include <QStringList>

namespace lumora {

bool isSkipped(const ProcessingResult& result)
{
    static const std::string skipped = ImageOptimizerError::overwriteDeclined().errorDescription();
    return !result.isSuccess && (result.message == skipped || isLeftAlone(result));
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

void BatchOutcome::add(const ProcessingResult& result)
{
    ++(result.isSuccess ? succeeded : isSkipped(result) ? skipped : failed);
}

QString BatchOutcome::text() const
{
    if (failed == 0 && skipped == 0 && leftOut == 0) return {};
    QStringList parts;
    const auto add = [&parts](int count, const char* what) {
        if (count > 0) parts << QString::number(count) + u' ' + QLatin1String(what);
    };
    add(succeeded, "optimized");
    add(failed, "failed");
    add(skipped, "skipped");
    add(leftOut, "left out");
    return parts.join(QStringLiteral(", "));
}

} // namespace lumora
