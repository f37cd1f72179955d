// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "records/optimizer_settings.h"

namespace lumora {

// The order of operands decides what a quality that is not a number becomes: both comparisons with it are
// false, so the first keeps 100 and the whole gives 1.0.
double normalizedQuality(double quality)
{
    const double atMost100 = quality < 100.0 ? quality : 100.0;
    const double atLeast1 = atMost100 >= 1.0 ? atMost100 : 1.0;
    return atLeast1 / 100.0;
}

bool usesLossyCompression(OutputFormat format)
{
    return !isLosslessOnly(format);
}

double OptimizerSettings::normalizedQuality() const
{
    return lumora::normalizedQuality(quality);
}

bool OptimizerSettings::usesLossyCompression() const
{
    return lumora::usesLossyCompression(outputFormat);
}

} // namespace lumora
