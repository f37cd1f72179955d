// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "maker_note.h"

#include "note_in_place.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

namespace lumora {
namespace {

using namespace std::string_view_literals;

constexpr const char* placeName = "Exif.MakerNote.Offset";
constexpr const char* orderName = "Exif.MakerNote.ByteOrder";

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
    const auto found = data.findKey(Exiv2::ExifKey(orderName));
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
    const auto place = data.findKey(Exiv2::ExifKey(placeName));
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

Exiv2::ExifData decoded(const std::string& block)
{
    Exiv2::ExifData data;
    Exiv2::ExifParser::decode(data, bytesOf(block), static_cast<std::uint32_t>(block.size()));
    return data;
}

// The beginning of a JPEG, which would show the picture as it was.
bool mayHoldPreview(const std::string& note)
{
    return note.find("\xFF\xD8\xFF") != std::string::npos;
}

// Of a kind that nobody knows, with its own bytes at their old place, or without it.
std::string encodedWithUnknownNote(Exiv2::ExifData data, Exiv2::ByteOrder order, const NoteLimits& limits)
{
    const Note note = noteOf(data);
    removeNote(data);
    if (data.empty()) return {};
    std::string block = encoded(data, order);
    if (!limits.mayStayInPlace || note.place == 0 || mayHoldPreview(note.bytes)) return block;
    std::string inPlace = withNoteInPlace(block, note.bytes, note.place);
    const bool isWhole = !inPlace.empty() && inPlace.size() <= limits.longestBlock;
    return isWhole ? inPlace : block;
}

} // namespace

bool isLeftBehind(const Exiv2::Exifdatum& datum)
{
    if (!isField(datum)) return false;
    const std::string name = datum.tagName();
    return datum.groupName() == "NikonPreview" || name == "ScanIFD" || name.starts_with("Thumbnail") ||
           name.starts_with("Preview");
}

bool hasUnknownNote(const Exiv2::ExifData& data)
{
    return data.findKey(noteKey()) != data.end() && data.findKey(Exiv2::ExifKey(placeName)) == data.end();
}

void addNotePlace(const std::string& block, Exiv2::ExifData& data)
{
    const auto place = placeOfNote(block);
    if (!place) return;
    data[placeName] = static_cast<std::uint32_t>(place->at);
    data[orderName] = std::string(place->isBigEndian ? "MM" : "II");
}

std::string encodedWithMakerNote(Exiv2::ExifData data, const NoteLimits& limits)
{
    const auto fields = fieldsOf(data);
    const Exiv2::ByteOrder order = byteOrderOf(data); // which goes with the note
    if (fields.empty()) {
        return isSelfContained(data) ? encoded(data, order)
                                     : encodedWithUnknownNote(std::move(data), order, limits);
    }
    std::string block = encoded(data, order);
    const auto isWhole = [&](const std::string& candidate) {
        return !candidate.empty() && candidate.size() <= limits.longestBlock &&
               fieldsOf(decoded(candidate)) == fields;
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
