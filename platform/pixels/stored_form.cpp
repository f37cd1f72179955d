// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/stored_form.h"

#include <vips/vips.h>

#include <string_view>

namespace lumora {
namespace {

constexpr const char* paletteField = "palette-bit-depth"; // the image library's own
constexpr const char* grayField = "lumora-gray-bits";

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
    if (const int bits = numberIn(image, grayField); bits > 0) return {false, bits};
    return {false, static_cast<int>(8 * vips_format_sizeof(vips_image_get_format(image)))};
}

bool isComponentField(std::string_view field)
{
    return field == VIPS_META_ICC_NAME || field == paletteField || field == grayField;
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

} // namespace lumora
