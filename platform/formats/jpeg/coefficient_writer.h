// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A JPEG file made of coefficients: the library holds them and finds the shortest codes for them.
// Progressive, because the parts of the picture then have code tables of their own. One thread.
#pragma once

#include "jpeg/block_quantizer.h"
#include "system/result.h"

#include <csetjmp>
#include <cstddef>
#include <cstdint>
#include <cstdio>

#include <jpeglib.h>

#include <array>
#include <functional>
#include <optional>
#include <span>
#include <string_view>

namespace lumora {

struct CoefficientShape
{
    int width;
    int height;
    int components; // 1 or 3
    bool hasHalvedChroma;
};

class CoefficientWriter
{
public:
    using Taker = std::function<Status(std::span<const std::byte>)>;

    explicit CoefficientWriter(Taker take);
    ~CoefficientWriter();
    CoefficientWriter(const CoefficientWriter&) = delete;
    CoefficientWriter& operator=(const CoefficientWriter&) = delete;

    // Sets the memory for all coefficients aside.
    Status start(const CoefficientShape& shape);
    // After start(), for every component.
    Status setSteps(int component, const FrequencyTable<std::uint16_t>& steps);

    // Beyond the picture's edge too, as far as blocks of all components belong together.
    int blocksAcross(int component) const;
    int blocksDown(int component) const;
    // The 64 coefficients of each block of a row, one block after another. Null when the library refuses.
    std::int16_t* blockRow(int component, int row);

    // Writes the whole file, with the profile unless that is empty.
    Status write(std::string_view profile);

private:
    // Each begins with what the library knows of it.
    struct Messages
    {
        jpeg_error_mgr manager{};
        std::jmp_buf failure{};
    };
    struct Output
    {
        jpeg_destination_mgr manager{};
        CoefficientWriter* writer = nullptr;
        std::array<JOCTET, 65536> buffer{};
    };
    static CoefficientWriter& writerOf(j_compress_ptr jpeg);
    static boolean flush(j_compress_ptr jpeg);
    static void flushRest(j_compress_ptr jpeg);

    j_common_ptr common();
    template <class Work>
    bool succeeds(Work work);
    void describe(const CoefficientShape& shape);
    void reserve();
    bool isTaken(std::size_t size) noexcept;
    Error error() const;

    Taker m_take;
    std::optional<Error> m_error;
    Messages m_messages;
    Output m_output;
    jpeg_compress_struct m_jpeg{};
    std::array<jvirt_barray_ptr, 3> m_coefficients{};
};

} // namespace lumora
