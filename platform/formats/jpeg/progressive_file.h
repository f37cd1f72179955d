// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A JPEG file made of coefficients, with the shortest codes for them. Progressive, because the parts of the
// picture then have codes of their own (ITU-T T.81, annexes B and G). Held is what the scans will say, which
// is a fraction of the coefficients. One thread; throws std::bad_alloc.
#pragma once

#include "jpeg/block_quantizer.h"
#include "jpeg/block_scans.h"
#include "jpeg/coefficient_shape.h"
#include "system/result.h"

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace lumora {

// By component.
using StepTables = std::vector<FrequencyTable<std::uint16_t>>;

class ProgressiveFile
{
public:
    explicit ProgressiveFile(const CoefficientShape& shape);

    // The component's next row of blocks, from the top down, each of 64 coefficients in the order of
    // zigzag.h.
    void add(int component, const std::int16_t* blocks);

    // After all rows: the whole file, with the profile unless that is empty.
    Status write(const StepTables& steps, std::string_view profile, const JpegTaker& take);

private:
    struct Scan
    {
        ScanForm form;
        std::unique_ptr<BlockScan> blocks;
    };

    Status writeScans(const JpegTaker& take);
    Status writeScansSideBySide(const JpegTaker& take);
    static Status write(Scan scan, const JpegTaker& take);

    CoefficientShape m_shape;
    std::vector<Scan> m_scans;
};

} // namespace lumora
