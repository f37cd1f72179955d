// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// HEIC files as the product writes none.
#pragma once

#include "heif/heif_handles.h"
#include "tests/support/sample_images.h"

#include <cstring>
#include <filesystem>
#include <memory>
#include <string>

namespace lumora::test {

struct ColorCodes
{
    heif_color_primaries primaries = heif_color_primaries_ITU_R_BT_709_5;
    heif_transfer_characteristics transfer = heif_transfer_characteristic_IEC_61966_2_1;
    heif_matrix_coefficients matrix = heif_matrix_coefficients_ITU_R_BT_601_6;
};

inline void encodeTo(const std::filesystem::path& file, heif_image* picture,
                     const heif_encoding_options* options, int slices = 1)
{
    const HeifContext context(heif_context_alloc());
    heif_encoder* found = nullptr;
    checkHeif(heif_context_get_encoder_for_format(context.get(), heif_compression_HEVC, &found));
    const std::unique_ptr<heif_encoder, HeifReleaser<heif_encoder_release>> encoder(found);
    checkHeif(heif_encoder_set_parameter_string(found, "x265:slices", std::to_string(slices).c_str()));
    checkHeif(heif_context_encode_image(context.get(), picture, found, options, nullptr));
    checkHeif(heif_context_write_to_file(context.get(), file.c_str()));
}

// One grey component, in so many slices; a slice has rows of blocks of 64 pixels. Throws Error.
inline void saveInSlices(const std::filesystem::path& file, const Pixels& gray, int slices)
{
    heif_image* made = nullptr;
    checkHeif(heif_image_create(gray.width, gray.height, heif_colorspace_monochrome, heif_chroma_monochrome,
                                &made));
    const HeifPicture picture(made);
    checkHeif(heif_image_add_plane(made, heif_channel_Y, gray.width, gray.height, 8));
    int stride = 0;
    std::uint8_t* const plane = heif_image_get_plane(made, heif_channel_Y, &stride);
    for (std::ptrdiff_t y = 0; y < gray.height; ++y)
        std::memcpy(plane + y * stride, gray.bytes.data() + y * gray.width,
                    static_cast<std::size_t>(gray.width));
    encodeTo(file, made, nullptr, slices);
}

// Colours that the container describes by numbers, as telephones do; of three bands. Throws Error.
inline void saveCoded(const std::filesystem::path& file, const Pixels& pixels, const ColorCodes& colors)
{
    const HeifCodePoints codes(heif_nclx_color_profile_alloc());
    codes->color_primaries = colors.primaries;
    codes->transfer_characteristics = colors.transfer;
    codes->matrix_coefficients = colors.matrix;
    codes->full_range_flag = 1;

    heif_image* made = nullptr;
    checkHeif(heif_image_create(pixels.width, pixels.height, heif_colorspace_RGB, heif_chroma_interleaved_RGB,
                                &made));
    const HeifPicture picture(made);
    checkHeif(heif_image_add_plane(made, heif_channel_interleaved, pixels.width, pixels.height, 8));
    checkHeif(heif_image_set_nclx_color_profile(made, codes.get()));
    int stride = 0;
    std::uint8_t* const plane = heif_image_get_plane(made, heif_channel_interleaved, &stride);
    const std::ptrdiff_t rowBytes = std::ptrdiff_t{pixels.width} * pixels.bands;
    for (std::ptrdiff_t y = 0; y < pixels.height; ++y)
        std::memcpy(plane + y * stride, pixels.bytes.data() + y * rowBytes,
                    static_cast<std::size_t>(rowBytes));

    const std::unique_ptr<heif_encoding_options, HeifReleaser<heif_encoding_options_free>> options(
        heif_encoding_options_alloc());
    options->output_nclx_profile = codes.get();
    options->macOS_compatibility_workaround_no_nclx_profile = 0;
    encodeTo(file, made, options.get());
}

} // namespace lumora::test
