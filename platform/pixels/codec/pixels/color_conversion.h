// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Colours of rows to sRGB. Relative colorimetric with black point compensation: it keeps every colour that
// sRGB has and maps the darkest ink to black. A conversion may be used by one thread at a time; the functions
// are thread-safe.
#pragma once

#include "pixels/profile_bytes.h"
#include "pixels/row_reader.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace lumora {

// An sRGB profile made small: it travels in every output that is tagged as sRGB. The same bytes always.
ProfileBytes srgbProfile();

class ColorConversion
{
public:
    // From the profile when it describes the model; otherwise gray and rgb count as sRGB already and cmyk as
    // the generic printing space.
    static ColorConversion toSrgb(RowFormat format, ProfileBytes profile);
    // The components of rgb and gray as they are.
    static ColorConversion none(RowFormat format);

    // True when components pass unchanged (a gray one becomes three equal ones).
    bool isIdentity() const { return !m_transform; }

    // False for a profile that says too little to convert by; run() then leaves colours as they are.
    bool isPossible() const { return m_isPossible; }

    // Converts pixels of the format's bands into its drawnBands(), straight alpha.
    void run(const std::uint8_t* from, std::uint8_t* to, std::size_t pixels) const;

private:
    explicit ColorConversion(RowFormat format) : m_format(format) {}
    static ColorConversion made(RowFormat format, ProfileBytes profile);
    void widen(const std::uint8_t* from, std::uint8_t* to, std::size_t pixels) const;

    RowFormat m_format;
    std::shared_ptr<void> m_transform; // never changed
    bool m_isPossible = true;
};

} // namespace lumora
