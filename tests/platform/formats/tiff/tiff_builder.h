// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// TIFF files of every kind, written sample by sample. All show the same: slopes to the right, downwards and
// to the left, and a last sample of one half.
#pragma once

#include <tiffio.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace lumora::test {

struct TiffKind
{
    const char* name;
    int bits = 8;
    int format = SAMPLEFORMAT_UINT;
    int photometric = PHOTOMETRIC_RGB;
    int samples = 3;
    int compression = COMPRESSION_NONE;
    bool isPlanar = false;
    bool isTiled = false;
    int extra = -1;   // what the last sample is, if it is no colour
    double black = 0; // stored for 0 and 1, where the type's range is not
    double white = 0;
    bool isDeclared = false; // that range, in the file
    int predictor = 0;
    int halving = 1; // of the resolution of colours
    int inks = INKSET_CMYK;
};

inline void PrintTo(const TiffKind& kind, std::ostream* out)
{
    *out << kind.name;
}

inline constexpr int tiffWidth = 64;
inline constexpr int tiffHeight = 48;

// From 0 to 1.
inline double tiffValue(int x, int y, int sample)
{
    const double right = x / (tiffWidth - 1.0);
    switch (sample) {
    case 0:
        return right;
    case 1:
        return y / (tiffHeight - 1.0);
    case 2:
        return 1 - right;
    default:
        return 0.5;
    }
}

class TiffBuilder
{
public:
    TiffBuilder(const std::filesystem::path& file, const TiffKind& kind)
        : m_kind(kind), m_tiff(TIFFOpen(file.c_str(), "w"))
    {
        if (!m_tiff) throw std::runtime_error("no TIFF can be written");
        writeFields();
        if (kind.isTiled) {
            writeTiles();
        } else if (kind.halving > 1 && kind.compression != COMPRESSION_JPEG) {
            writeClumps();
        } else {
            writeRows();
        }
        TIFFClose(m_tiff);
    }

private:
    static constexpr int rowsPerStrip = 16;
    static constexpr int tileEdge = 32; // the last ones reach beyond the picture

    void writeFields()
    {
        TIFFSetField(m_tiff, TIFFTAG_IMAGEWIDTH, tiffWidth);
        TIFFSetField(m_tiff, TIFFTAG_IMAGELENGTH, tiffHeight);
        TIFFSetField(m_tiff, TIFFTAG_BITSPERSAMPLE, m_kind.bits);
        TIFFSetField(m_tiff, TIFFTAG_SAMPLESPERPIXEL, m_kind.samples);
        TIFFSetField(m_tiff, TIFFTAG_SAMPLEFORMAT, m_kind.format);
        TIFFSetField(m_tiff, TIFFTAG_PHOTOMETRIC, m_kind.photometric);
        TIFFSetField(m_tiff, TIFFTAG_COMPRESSION, m_kind.compression);
        TIFFSetField(m_tiff, TIFFTAG_PLANARCONFIG, m_kind.isPlanar ? 2 : 1);
        if (m_kind.predictor != 0) TIFFSetField(m_tiff, TIFFTAG_PREDICTOR, m_kind.predictor);
        if (m_kind.extra >= 0) {
            const auto extra = static_cast<std::uint16_t>(m_kind.extra);
            TIFFSetField(m_tiff, TIFFTAG_EXTRASAMPLES, 1, &extra);
        }
        if (m_kind.isDeclared) {
            TIFFSetField(m_tiff, TIFFTAG_SMINSAMPLEVALUE, m_kind.black);
            TIFFSetField(m_tiff, TIFFTAG_SMAXSAMPLEVALUE, m_kind.white);
        }
        if (m_kind.photometric == PHOTOMETRIC_SEPARATED) TIFFSetField(m_tiff, TIFFTAG_INKSET, m_kind.inks);
        if (m_kind.photometric == PHOTOMETRIC_PALETTE) writePalette();
        if (m_kind.photometric == PHOTOMETRIC_YCBCR) {
            TIFFSetField(m_tiff, TIFFTAG_YCBCRSUBSAMPLING, m_kind.halving, m_kind.halving);
            std::vector<float> range{0, 255, 128, 255, 128, 255};
            TIFFSetField(m_tiff, TIFFTAG_REFERENCEBLACKWHITE, range.data());
        }
        if (m_kind.compression == COMPRESSION_JPEG) {
            TIFFSetField(m_tiff, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
            TIFFSetField(m_tiff, TIFFTAG_JPEGQUALITY, 97);
        }
        if (m_kind.isTiled) {
            TIFFSetField(m_tiff, TIFFTAG_TILEWIDTH, tileEdge);
            TIFFSetField(m_tiff, TIFFTAG_TILELENGTH, tileEdge);
        } else {
            TIFFSetField(m_tiff, TIFFTAG_ROWSPERSTRIP,
                         m_kind.compression == COMPRESSION_JBIG ? tiffHeight : rowsPerStrip);
        }
    }

    // From green to red.
    void writePalette()
    {
        std::vector<std::uint16_t> red;
        red.reserve(std::size_t{1} << static_cast<unsigned>(m_kind.bits));
        for (int i = 0; i < 1 << m_kind.bits; ++i)
            red.push_back(static_cast<std::uint16_t>(std::lround(65535.0 * i / ((1 << m_kind.bits) - 1))));
        const std::vector<std::uint16_t> green(red.rbegin(), red.rend());
        const std::vector<std::uint16_t> blue(red.size(), 0);
        TIFFSetField(m_tiff, TIFFTAG_COLORMAP, red.data(), green.data(), blue.data());
    }

    int planes() const { return m_kind.isPlanar ? m_kind.samples : 1; }

    std::vector<std::uint8_t> packed(int left, int y, int width, int plane) const
    {
        m_packed.clear();
        m_bits = 0;
        for (int x = left; x < left + width; ++x) {
            if (m_kind.isPlanar) {
                append(x, y, plane);
                continue;
            }
            for (int sample = 0; sample < m_kind.samples; ++sample)
                append(x, y, sample);
        }
        return m_packed;
    }

    void writeRows()
    {
        if (m_kind.compression == COMPRESSION_JBIG) return writeWhole();
        for (int plane = 0; plane < planes(); ++plane) {
            for (int y = 0; y < tiffHeight; ++y)
                TIFFWriteScanline(m_tiff, packed(0, y, tiffWidth, plane).data(),
                                  static_cast<std::uint32_t>(y), static_cast<std::uint16_t>(plane));
        }
    }

    void writeWhole()
    {
        std::vector<std::uint8_t> bytes;
        for (int y = 0; y < tiffHeight; ++y) {
            const auto row = packed(0, y, tiffWidth, 0);
            bytes.insert(bytes.end(), row.begin(), row.end());
        }
        TIFFWriteEncodedStrip(m_tiff, 0, bytes.data(), static_cast<tmsize_t>(bytes.size()));
    }

    void writeTiles()
    {
        for (int plane = 0; plane < planes(); ++plane) {
            for (int top = 0; top < tiffHeight; top += tileEdge) {
                for (int left = 0; left < tiffWidth; left += tileEdge) {
                    std::vector<std::uint8_t> tile;
                    for (int y = top; y < top + tileEdge; ++y) {
                        const auto row = packed(left, y, tileEdge, plane);
                        tile.insert(tile.end(), row.begin(), row.end());
                    }
                    TIFFWriteTile(m_tiff, tile.data(), static_cast<std::uint32_t>(left),
                                  static_cast<std::uint32_t>(top), 0, static_cast<std::uint16_t>(plane));
                }
            }
        }
    }

    // Brightness of each pixel, grey.
    void writeClumps()
    {
        for (int strip = 0; strip < tiffHeight / rowsPerStrip; ++strip) {
            std::vector<std::uint8_t> bytes;
            for (int y = strip * rowsPerStrip; y < (strip + 1) * rowsPerStrip; y += m_kind.halving) {
                for (int x = 0; x < tiffWidth; x += m_kind.halving) {
                    for (int i = 0; i < m_kind.halving * m_kind.halving; ++i)
                        bytes.push_back(static_cast<std::uint8_t>(
                            std::lround(255 * tiffValue(x + i % m_kind.halving, y + i / m_kind.halving, 0))));
                    bytes.insert(bytes.end(), {128, 128});
                }
            }
            TIFFWriteEncodedStrip(m_tiff, static_cast<std::uint32_t>(strip), bytes.data(),
                                  static_cast<tmsize_t>(bytes.size()));
        }
    }

    bool isColor(int sample) const { return m_kind.extra < 0 || sample < m_kind.samples - 1; }

    double stored(int x, int y, int sample) const
    {
        double value = tiffValue(x, y, sample);
        if (!isColor(sample)) return value;
        if (m_kind.extra == EXTRASAMPLE_ASSOCALPHA) value *= tiffValue(x, y, m_kind.samples - 1);
        return m_kind.photometric == PHOTOMETRIC_MINISWHITE ? 1 - value : value;
    }

    void append(int x, int y, int sample) const
    {
        const double value = stored(x, y, sample);
        const bool hasRange = m_kind.black != m_kind.white && isColor(sample);
        const double scaled = m_kind.black + (m_kind.white - m_kind.black) * value;
        if (m_kind.format == SAMPLEFORMAT_IEEEFP || m_kind.format == SAMPLEFORMAT_COMPLEXIEEEFP) {
            appendBits(realBits(hasRange ? scaled : value));
            return;
        }
        const double steps = std::ldexp(1.0, m_kind.bits) - 1;
        const double lowest = m_kind.format == SAMPLEFORMAT_INT ? -std::ldexp(1.0, m_kind.bits - 1) : 0;
        const double number = hasRange ? scaled : lowest + value * steps;
        // The largest number of 64 bits is none of this type.
        constexpr double below = 4096;
        const double largest = lowest + steps - (m_kind.bits == 64 ? below : 0);
        const double fitting = std::min(std::round(number), largest);
        appendBits(fitting < 0 ? static_cast<std::uint64_t>(static_cast<std::int64_t>(fitting))
                               : static_cast<std::uint64_t>(fitting));
    }

    std::uint64_t realBits(double value) const
    {
        if (m_kind.bits == 64) return std::bit_cast<std::uint64_t>(value);
        const auto bits = std::bit_cast<std::uint32_t>(static_cast<float>(value));
        if (m_kind.bits == 32) return bits;
        // A shorter fraction, and an exponent that counts from elsewhere.
        const bool isHalf = m_kind.bits == 16;
        const std::uint32_t exponent = (bits >> 23U & 255U) - 127U + (isHalf ? 15U : 63U);
        if (value == 0) return 0;
        return isHalf ? exponent << 10U | (bits >> 13U & 0x3FFU) : exponent << 16U | (bits >> 7U & 0xFFFFU);
    }

    void appendBits(std::uint64_t value) const
    {
        if (m_kind.bits % 8 == 0) {
            for (int byte = 0; byte < m_kind.bits / 8; ++byte)
                m_packed.push_back(static_cast<std::uint8_t>(value >> 8U * static_cast<unsigned>(byte)));
            return;
        }
        for (int bit = m_kind.bits; bit-- > 0; ++m_bits) {
            if (m_bits % 8 == 0) m_packed.push_back(0);
            const auto set = static_cast<unsigned>(value >> static_cast<unsigned>(bit) & 1U);
            m_packed.back() = static_cast<std::uint8_t>(m_packed.back() | set << (7U - m_bits % 8U));
        }
    }

    TiffKind m_kind;
    TIFF* m_tiff;
    mutable std::vector<std::uint8_t> m_packed;
    mutable unsigned m_bits = 0;
};

} // namespace lumora::test
