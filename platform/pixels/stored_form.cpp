// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/stored_form.h"

#include <vips/vips.h>

#include <string_view>

namespace lumora {
namespace {

constexpr const char* paletteField = "palette-bit-depth"; // the image library's own
constexpr const char* grayField = "lumora-gray-bits";
constexpr const char* transparentColorField = "lumora-transparent-color";

int numberIn(VipsImage* image, const char* field)
{
    int number = 0;
    if (!vips_image_get_typeof(image, field) || vips_image_get_int(image, field, &number) != 0) return 0;
    return number;
}

} // namespace

StoredForm storedForm(VipsImage* image)
{
    if (const int bits = numberIn(image, paletteField); bits > 0) return {true, bits};
    const int grayBits = numberIn(image, grayField);
    const auto componentBits = static_cast<int>(8 * vips_format_sizeof(vips_image_get_format(image)));
    return {.bits = grayBits > 0 ? grayBits : componentBits,
            .hasTransparentColor = numberIn(image, transparentColorField) != 0};
}

bool isComponentField(std::string_view field)
{
    return field == VIPS_META_ICC_NAME || field == paletteField || field == grayField ||
           field == transparentColorField;
}

void copyComponentFields(VipsImage* from, VipsImage* to)
{
    gchar** fields = vips_image_get_fields(from);
    for (gchar** field = fields; *field; ++field) {
        if (!isComponentField(*field)) continue;
        GValue value = G_VALUE_INIT;
        if (vips_image_get(from, *field, &value) != 0) continue;
        vips_image_set(to, *field, &value);
        g_value_unset(&value);
    }
    g_strfreev(fields);
}

void noteGrayBits(VipsImage* image, int bits)
{
    vips_image_set_int(image, grayField, bits);
}

void noteTransparentColor(VipsImage* image)
{
    vips_image_set_int(image, transparentColorField, 1);
}

} // namespace lumora
