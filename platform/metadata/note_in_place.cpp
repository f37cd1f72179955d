// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "note_in_place.h"

#include "system/file_bytes.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>
#include <vector>

namespace lumora {
namespace {

constexpr std::uint32_t exifTag = 0x8769;
constexpr std::uint32_t noteTag = 0x927C;
constexpr std::size_t headSize = 8;
constexpr std::size_t entrySize = 12;
constexpr std::size_t inlineSize = 4;

struct Directory;

struct Entry
{
    std::uint32_t tag;
    std::uint32_t type;
    std::uint32_t count;
    std::string value;            // at least four bytes
    std::vector<Directory> below; // one, where the value leads to a further directory
};

struct Directory
{
    std::vector<Entry> entries;

    std::size_t size() const { return 2 + entries.size() * entrySize + 4; }
};

// Elsewhere these numbers are plain values.
bool leadsToDirectory(std::uint32_t tag, std::uint32_t type, std::uint32_t count, std::uint32_t parent)
{
    constexpr std::uint32_t number = 4;
    constexpr std::uint32_t gpsTag = 0x8825;
    constexpr std::uint32_t interoperabilityTag = 0xA005;
    const bool isPlace =
        parent == exifTag ? tag == interoperabilityTag : parent == 0 && (tag == exifTag || tag == gpsTag);
    return isPlace && type == number && count == 1;
}

std::size_t bytesOfType(std::uint32_t type)
{
    constexpr std::array<std::size_t, 14> sizes{0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8, 4};
    return type < sizes.size() ? sizes.at(type) : 0;
}

class Reader
{
public:
    explicit Reader(const std::string& block) : m_block(block) {}

    std::uint32_t number(std::size_t at, std::size_t size) const
    {
        return static_cast<std::uint32_t>(m_block.starts_with('M') ? bigEndianAt(m_block, at, size)
                                                                   : littleEndianAt(m_block, at, size));
    }

    // The place of the entry of a directory; 0 without it.
    std::size_t find(std::uint32_t tag, std::size_t directoryAt) const
    {
        const std::size_t count = number(directoryAt, 2);
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t at = directoryAt + 2 + i * entrySize;
            if (number(at, 2) == tag) return at;
        }
        return 0;
    }

    // `parent` is the tag that leads there.
    Directory directory(std::size_t at, std::uint32_t parent = 0)
    {
        Directory directory;
        const std::size_t count = number(at, 2);
        if (!isInside(at, 2 + count * entrySize)) return directory;
        for (std::size_t i = 0; i < count; ++i)
            directory.entries.push_back(entry(at + 2 + i * entrySize, parent));
        return directory;
    }

    // Nothing was said to lie outside of the block.
    bool isSound() const { return m_isSound; }

private:
    bool isInside(std::size_t at, std::size_t size)
    {
        const bool isInside = at <= m_block.size() && size <= m_block.size() - at;
        m_isSound = m_isSound && isInside;
        return isInside;
    }

    Entry entry(std::size_t at, std::uint32_t parent)
    {
        Entry entry{number(at, 2), number(at + 2, 2), number(at + 4, 4), {}, {}};
        entry.value.assign(inlineSize, '\0');
        if (leadsToDirectory(entry.tag, entry.type, entry.count, parent)) {
            entry.below.push_back(directory(number(at + 8, 4), entry.tag));
            return entry;
        }
        const std::size_t size = std::max(bytesOfType(entry.type) * entry.count, inlineSize);
        const std::size_t from = size == inlineSize ? at + 8 : number(at + 8, 4);
        if (isInside(from, size)) entry.value = m_block.substr(from, size);
        return entry;
    }

    const std::string& m_block;
    bool m_isSound = true;
};

// Lays things out from the front, each where it does not touch the note.
class Writer
{
public:
    Writer(bool isBigEndian, const std::string& note, std::size_t place)
        : m_isBigEndian(isBigEndian), m_note(note), m_place(place), m_block(place + note.size(), '\0')
    {
        std::ranges::copy(note, m_block.begin() + static_cast<std::ptrdiff_t>(place));
    }

    std::string block(const Directory& first)
    {
        m_block.replace(0, 2, m_isBigEndian ? "MM" : "II");
        put(2, 2, 42);
        put(4, 4, directory(first));
        return std::move(m_block);
    }

private:
    std::size_t directory(const Directory& directory)
    {
        const std::size_t at = room(directory.size());
        put(at, 2, directory.entries.size());
        for (std::size_t i = 0; i < directory.entries.size(); ++i)
            entry(at + 2 + i * entrySize, directory.entries[i]);
        return at;
    }

    void entry(std::size_t at, const Entry& entry)
    {
        put(at, 2, entry.tag);
        put(at + 2, 2, entry.type);
        put(at + 4, 4, entry.count);
        if (entry.tag == noteTag) {
            put(at + 8, 4, m_place);
        } else if (!entry.below.empty()) {
            put(at + 8, 4, directory(entry.below.front()));
        } else if (entry.value.size() <= inlineSize) {
            m_block.replace(at + 8, inlineSize, entry.value);
        } else {
            const std::size_t valueAt = room(entry.value.size());
            m_block.replace(valueAt, entry.value.size(), entry.value);
            put(at + 8, 4, valueAt);
        }
    }

    // Offsets are even.
    std::size_t room(std::size_t size)
    {
        const std::size_t end = m_place + m_note.size();
        if (m_next < end && m_next + size > m_place) m_next = end + end % 2;
        const std::size_t at = m_next;
        m_next += size + size % 2;
        m_block.resize(std::max(m_block.size(), m_next));
        return at;
    }

    void put(std::size_t at, std::size_t size, std::size_t value)
    {
        for (std::size_t i = 0; i < size; ++i) {
            const std::size_t shift = 8 * (m_isBigEndian ? size - 1 - i : i);
            m_block[at + i] = static_cast<char>(value >> shift & 0xFFU);
        }
    }

    bool m_isBigEndian;
    const std::string& m_note;
    std::size_t m_place;
    std::string m_block;
    std::size_t m_next = headSize;
};

// Entries are sorted by their tags.
Entry& added(Directory& directory, Entry entry)
{
    std::erase_if(directory.entries, [&](const Entry& other) { return other.tag == entry.tag; });
    const auto place = std::ranges::upper_bound(directory.entries, entry.tag, {}, &Entry::tag);
    return *directory.entries.insert(place, std::move(entry));
}

Directory& exifDirectory(Directory& first)
{
    const auto found = std::ranges::find(first.entries, exifTag, &Entry::tag);
    if (found != first.entries.end() && !found->below.empty()) return found->below.front();
    constexpr std::uint32_t number = 4;
    return added(first, {exifTag, number, 1, std::string(inlineSize, '\0'), {Directory{}}}).below.front();
}

} // namespace

std::optional<NotePlace> placeOfNote(const std::string& block)
{
    const Reader reader(block);
    const std::size_t below = reader.find(exifTag, reader.number(4, 4));
    const std::size_t entry = below == 0 ? 0 : reader.find(noteTag, reader.number(below + 8, 4));
    if (entry == 0) return std::nullopt;
    const std::size_t size = reader.number(entry + 4, 4);
    const std::size_t at = reader.number(entry + 8, 4);
    const bool isOfBytes =
        bytesOfType(reader.number(entry + 2, 2)) == 1; // others have an order in the library
    if (!isOfBytes || size <= inlineSize || at > block.size() || size > block.size() - at)
        return std::nullopt;
    return NotePlace{at, block.starts_with('M')};
}

std::string withNoteInPlace(const std::string& block, const std::string& note, std::size_t place)
{
    constexpr std::size_t farthest = std::size_t{1} << 20U; // of a TIFF file it may lie anywhere
    if (place < headSize || place > farthest || note.size() <= inlineSize) return {};
    if (block.size() < headSize) return {};
    Reader reader(block);
    Directory first = reader.directory(reader.number(4, 4));
    if (!reader.isSound()) return {};
    constexpr std::uint32_t plainBytes = 7;
    added(exifDirectory(first), {noteTag, plainBytes, static_cast<std::uint32_t>(note.size()), note, {}});
    return Writer(block.starts_with('M'), note, place).block(first);
}

} // namespace lumora
