// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "heif/heif_file.h"

#include "heif/heif_handles.h"
#include "heif/heif_input.h"
#include "metadata/xmp_size.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace lumora {
namespace {

std::optional<std::string> xmpOf(const heif_image_handle* picture)
{
    std::vector<heif_item_id> blocks(static_cast<std::size_t>(
        std::max(0, heif_image_handle_get_number_of_metadata_blocks(picture, "mime"))));
    heif_image_handle_get_list_of_metadata_block_IDs(picture, "mime", blocks.data(),
                                                     static_cast<int>(blocks.size()));
    bool isTooLarge = false;
    for (const heif_item_id block : blocks) {
        const std::string_view kind = heif_image_handle_get_metadata_content_type(picture, block);
        const std::size_t size = heif_image_handle_get_metadata_size(picture, block);
        if (kind != "application/rdf+xml" || size == 0) continue;
        isTooLarge = isTooLarge || size > largestXmp;
        if (size > largestXmp) continue;
        std::string packet(size, '\0');
        if (heif_image_handle_get_metadata(picture, block, packet.data()).code == heif_error_Ok)
            return packet;
    }
    return isTooLarge ? std::nullopt : std::optional<std::string>("");
}

std::vector<std::string> auxiliaryTypesOf(const heif_image_handle* picture)
{
    constexpr int others = LIBHEIF_AUX_IMAGE_FILTER_OMIT_ALPHA | LIBHEIF_AUX_IMAGE_FILTER_OMIT_DEPTH;
    std::vector<heif_item_id> pictures(static_cast<std::size_t>(
        std::max(0, heif_image_handle_get_number_of_auxiliary_images(picture, others))));
    heif_image_handle_get_list_of_auxiliary_image_IDs(picture, others, pictures.data(),
                                                      static_cast<int>(pictures.size()));
    std::vector<std::string> types;
    for (const heif_item_id id : pictures) {
        heif_image_handle* opened = nullptr;
        if (heif_image_handle_get_auxiliary_image_handle(picture, id, &opened).code != heif_error_Ok)
            continue;
        const HeifHandle auxiliary(opened);
        const char* type = nullptr;
        if (heif_image_handle_get_auxiliary_type(opened, &type).code != heif_error_Ok || !type) continue;
        types.emplace_back(type);
        heif_image_handle_free_auxiliary_types(opened, &type);
    }
    return types;
}

std::optional<ColorDescription> colorsOf(const heif_image_handle* picture)
{
    heif_color_profile_nclx* found = nullptr;
    const heif_error error = heif_image_handle_get_nclx_color_profile(picture, &found);
    const HeifCodePoints codes(found); // made with the error of an unknown number, too
    if (error.code != heif_error_Ok) return std::nullopt;
    return colorsOfCodes(static_cast<unsigned>(codes->color_primaries),
                         static_cast<unsigned>(codes->transfer_characteristics));
}

} // namespace

HeifExtras heifExtras(int descriptor)
{
    HeifInput input(descriptor);
    const HeifContext context(heif_context_alloc());
    const HeifHandle picture = input.primaryPicture(context.get());
    if (!picture) return {};
    return {xmpOf(picture.get()), auxiliaryTypesOf(picture.get()), colorsOf(picture.get())};
}

} // namespace lumora
