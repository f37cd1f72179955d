// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// How many blocks of coefficients a picture has (ITU-T T.81, A.1.1 and A.2). Any thread.
#pragma once

namespace lumora {

struct CoefficientShape
{
    int width;
    int height;
    int components; // 1 or 3
    bool hasHalvedChroma;

    // Of samples that a block of colour stands for, along an edge.
    int blockEdge(int component) const { return hasHalvedChroma && component > 0 ? 16 : 8; }
    // That the file holds.
    int blocksAcross(int component) const { return quotientUp(width, blockEdge(component)); }
    int blocksDown(int component) const { return quotientUp(height, blockEdge(component)); }
    // Multiples of what blocks of all components cover together.
    int paddedWidth() const { return quotientUp(width, unitEdge()) * unitEdge(); }
    int paddedHeight() const { return quotientUp(height, unitEdge()) * unitEdge(); }

private:
    static int quotientUp(int length, int edge) { return (length + edge - 1) / edge; }
    int unitEdge() const { return hasHalvedChroma ? 16 : 8; }
};

} // namespace lumora
