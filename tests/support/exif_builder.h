// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// EXIF blocks with a camera maker's private note, which no program at hand can write from nothing.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace lumora::test {

class ExifBuilder
{
public:
    explicit ExifBuilder(bool isBigEndian) : m_isBigEndian(isBigEndian) {}

    struct Field
    {
        unsigned tag;
        std::string text;
    };

    // The note lies far from where a writer would put it, at `noteOffset`.
    static constexpr std::size_t noteOffset = 172;
    std::string block(std::string make, const std::string& note) const
    {
        make.resize(16, '\0');
        std::string exif = head() + number(8, 4);
        exif += number(2, 2) + entry(0x010F, 2, 16, 38) + entry(0x8769, 4, 1, 54) + number(0, 4) + make;
        exif += number(1, 2) + entry(0x927C, 7, note.size(), noteOffset) + number(0, 4);
        exif.resize(noteOffset, '\0');
        return exif + note;
    }

    // A directory of texts, longer than four bytes each, whose offsets count from `base` bytes before it.
    std::string directory(const std::vector<Field>& fields, std::size_t base) const
    {
        std::string entries = number(fields.size(), 2);
        std::string texts;
        const std::size_t textsAt = base + 2 + 12 * fields.size() + 4;
        for (const Field& field : fields) {
            entries += entry(field.tag, 2, field.text.size() + 1, textsAt + texts.size());
            texts += field.text + '\0';
            if (texts.size() % 2 != 0) texts += '\0';
        }
        return entries + number(0, 4) + texts;
    }

    // What a block begins with.
    std::string head() const { return (m_isBigEndian ? "MM" : "II") + number(42, 2); }

    std::string entry(unsigned tag, unsigned type, std::size_t count, std::size_t value) const
    {
        return number(tag, 2) + number(type, 2) + number(count, 4) + number(value, 4);
    }

    std::string number(std::size_t value, unsigned bytes) const
    {
        std::string text;
        for (unsigned i = 0; i < bytes; ++i)
            text += static_cast<char>(value >> 8U * (m_isBigEndian ? bytes - 1 - i : i) & 0xFFU);
        return text;
    }

private:
    bool m_isBigEndian;
};

// The JPEG with the block as its EXIF.
inline std::string jpegWithExif(const std::string& jpeg, const std::string& block)
{
    const std::string content = std::string("Exif\0\0", 6) + block;
    return jpeg.substr(0, 2) + "\xFF\xE1" + ExifBuilder(true).number(content.size() + 2, 2) + content +
           jpeg.substr(2);
}

} // namespace lumora::test
