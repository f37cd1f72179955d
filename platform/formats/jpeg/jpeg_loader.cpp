// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/jpeg_loader.h"

#include "jpeg/jpeg_decoder.h"
#include "row_picture.h"

#include <vips/vips.h>

#include <fcntl.h>

#include <memory>
#include <utility>

namespace lumora {
namespace {

class JpegRows : public RowSource
{
public:
    JpegRows(FileDescriptor file, int divisor, const VipsImage* form)
        : m_decoder(std::move(file), divisor), m_width(form->Xsize), m_height(form->Ysize),
          m_bands(form->Bands)
    {
    }

    Status next(std::uint8_t* row) override
    {
        if (!m_isStarted) {
            m_isStarted = true;
            if (auto status = m_decoder.start(m_width, m_height, m_bands); !status) return status;
        }
        return m_decoder.read(row);
    }

private:
    JpegDecoder m_decoder;
    int m_width;
    int m_height;
    int m_bands;
    bool m_isStarted = false;
};

// Full size, kind, profile and metadata; no rows.
Result<VipsImagePtr> header(int descriptor)
{
    const std::unique_ptr<VipsSource, VipsUnref> source(vips_source_new_from_descriptor(descriptor));
    VipsImage* image = nullptr;
    if (!source || vips_jpegload_source(source.get(), &image, "access", VIPS_ACCESS_SEQUENTIAL, nullptr) != 0)
        return takeVipsError();
    return VipsImagePtr(image);
}

} // namespace

Result<VipsImagePtr> loadJpeg(int divisor, int descriptor)
{
    const auto described = header(descriptor);
    if (!described) return described.error();
    FileDescriptor file(fcntl(descriptor, F_DUPFD_CLOEXEC, 0));
    if (!file.isOpen()) return Error{"no descriptor left"};

    VipsImagePtr form(vips_image_new());
    if (vips_image_pipelinev(form.get(), VIPS_DEMAND_STYLE_THINSTRIP, described->get(), nullptr) != 0)
        return takeVipsError();
    form->Xsize = (form->Xsize + divisor - 1) / divisor;
    form->Ysize = (form->Ysize + divisor - 1) / divisor;
    auto rows = std::make_unique<JpegRows>(std::move(file), divisor, form.get());
    return rowPicture(std::move(form), std::move(rows));
}

} // namespace lumora
