// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "row_picture.h"

#include "pixels/row_stream.h"

#include <cstddef>
#include <utility>

namespace lumora {
namespace {

class DecodedRows : public RowMaker
{
public:
    DecodedRows(std::unique_ptr<RowSource> source, std::size_t rowBytes)
        : m_source(std::move(source)), m_rowBytes(rowBytes)
    {
    }

    Status make(const RowProvider&, int, int count, std::uint8_t* rows) override
    {
        for (int y = 0; y < count; ++y, rows += m_rowBytes) {
            if (auto status = m_source->next(rows); !status) return status;
        }
        return Done{};
    }

private:
    std::unique_ptr<RowSource> m_source;
    std::size_t m_rowBytes;
};

} // namespace

Result<VipsImagePtr> rowPicture(VipsImagePtr form, std::unique_ptr<RowSource> source)
{
    auto rows = std::make_unique<DecodedRows>(std::move(source), rowBytesOf(form.get()));
    auto status = streamInto(form.get(), nullptr, std::move(rows), std::make_shared<ReadOutcome>());
    if (!status) return status.error();
    return form;
}

} // namespace lumora
