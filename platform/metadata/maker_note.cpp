// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "maker_note.h"

#include "note_in_place.h"

#include <algorithm>
#include <array>
#include <vector>

namespace lumora {
namespace {

using namespace std::string_view_literals;

const Exiv2::ExifKey& noteKey()
{
    static const Exiv2::ExifKey key("Exif.Photo.MakerNote");
    return key;
}

// Also the library's own fields of where the note lay and in which byte order.
bool belongsToNote(const Exiv2::Exifdatum& datum)
{
    const std::string group = datum.groupName();
    return group == "MakerNote" || Exiv2::ExifTags::isMakerGroup(group);
}

bool isField(const Exiv2::Exifdatum& datum)
{
    return belongsToNote(datum) && datum.groupName() != "MakerNote";
}

// Beginnings of notes whose offsets count from the note itself, or that have none.
bool isSelfContained(const Exiv2::ExifData& data)
{
    constexpr std::array beginnings{"Apple iOS\0"sv, "HDRP"sv};
    const auto note = data.findKey(noteKey());
    if (note == data.end()) return true;
    const std::string bytes = fieldOf(*note).bytes;
    return std::ranges::any_of(beginnings, [&](auto start) { return bytes.starts_with(start); });
}

void removeNote(Exiv2::ExifData& data)
{
    for (auto datum = data.begin(); datum != data.end();) {
        const bool goes = belongsToNote(*datum) || datum->key() == noteKey().key();
        datum = goes ? data.erase(datum) : std::next(datum);
    }
}

Exiv2::ByteOrder byteOrderOf(const Exiv2::ExifData& data)
{
    const auto found = data.findKey(Exiv2::ExifKey("Exif.MakerNote.ByteOrder"));
    return found != data.end() && found->toString() == "MM" ? Exiv2::bigEndian : Exiv2::littleEndian;
}

struct Note
{
    std::string bytes;
    std::size_t place = 0; // from the start of the block that it was read from; 0 when unknown
};

Note noteOf(const Exiv2::ExifData& data)
{
    const auto bytes = data.findKey(noteKey());
    const auto place = data.findKey(Exiv2::ExifKey("Exif.MakerNote.Offset"));
    if (bytes == data.end() || place == data.end()) return {};
    return {fieldOf(*bytes).bytes, static_cast<std::size_t>(std::max(0L, place->toLong()))};
}

std::string encoded(const Exiv2::ExifData& data, Exiv2::ByteOrder order)
{
    Exiv2::Blob blob;
    Exiv2::ExifParser::encode(blob, order, data);
    return {blob.begin(), blob.end()};
}

std::vector<std::pair<std::string, std::string>> fieldsOf(const Exiv2::ExifData& data)
{
    std::vector<std::pair<std::string, std::string>> fields;
    for (const auto& datum : data) {
        if (isField(datum) && !isLeftBehind(datum)) {
            MetadataField field = fieldOf(datum);
            fields.emplace_back(std::move(field.key), std::move(field.bytes));
        }
    }
    std::ranges::sort(fields);
    return fields;
}

std::vector<std::pair<std::string, std::string>> fieldsOf(const std::string& block)
{
    Exiv2::ExifData data;
    Exiv2::ExifParser::decode(data, bytesOf(block), static_cast<std::uint32_t>(block.size()));
    return fieldsOf(data);
}

} // namespace

bool isLeftBehind(const Exiv2::Exifdatum& datum)
{
    if (!isField(datum)) return false;
    const std::string name = datum.tagName();
    return datum.groupName() == "NikonPreview" || name == "ScanIFD" || name.starts_with("Thumbnail") ||
           name.starts_with("Preview");
}

std::string encodedWithMakerNote(Exiv2::ExifData data, const NoteLimits& limits)
{
    const auto fields = fieldsOf(data);
    const Exiv2::ByteOrder order = byteOrderOf(data); // which goes with the note
    if (fields.empty()) {
        if (!isSelfContained(data)) removeNote(data);
        return encoded(data, order);
    }
    std::string block = encoded(data, order);
    const auto isWhole = [&](const std::string& candidate) {
        return !candidate.empty() && candidate.size() <= limits.longestBlock && fieldsOf(candidate) == fields;
    };
    if (isWhole(block)) return block;
    const Note note = noteOf(data);
    removeNote(data);
    if (data.empty()) return {};
    block = encoded(data, order);
    if (!limits.mayStayInPlace) return block;
    std::string inPlace = withNoteInPlace(block, note.bytes, note.place);
    return isWhole(inPlace) ? inPlace : block;
}

} // namespace lumora
