// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "exiv2_library.h"

#include <array>
#include <cstdio>
#include <mutex>

namespace lumora {
namespace {

void lockToolkit(void* mutex, bool lock)
{
    auto* const toolkit = static_cast<std::recursive_mutex*>(mutex);
    lock ? toolkit->lock() : toolkit->unlock();
}

bool start()
{
    static std::recursive_mutex toolkit;
    Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
    return Exiv2::XmpParser::initialize(lockToolkit, &toolkit);
}

// The library's own kinds of value lie above the field types that files know.
constexpr std::uint16_t fieldTypeOf(Exiv2::TypeId type)
{
    return type <= Exiv2::tiffIfd8 ? static_cast<std::uint16_t>(type)
                                   : static_cast<std::uint16_t>(Exiv2::undefined);
}

void readInto(Exiv2::Value& value, const MetadataField& field)
{
    value.read(bytesOf(field.bytes), static_cast<long>(field.bytes.size()), Exiv2::littleEndian);
}

MetadataField fieldWithKey(std::string key, const Exiv2::Metadatum& datum)
{
    Exiv2::DataBuf buffer(datum.size());
    datum.copy(buffer.pData_, Exiv2::littleEndian);
    return {std::move(key), fieldTypeOf(datum.typeId()), textOf(buffer)};
}

// In camera makers' groups several fields share a name, so there the number tells them apart.
std::string unambiguousKey(const Exiv2::Exifdatum& datum)
{
    const std::string group = datum.groupName();
    if (!Exiv2::ExifTags::isMakerGroup(group)) return datum.key();
    std::array<char, 8> number{};
    std::snprintf(number.data(), number.size(), "0x%04x", static_cast<unsigned>(datum.tag()));
    return datum.familyName() + std::string(".") + group + "." + number.data();
}

} // namespace

void ensureExiv2Ready()
{
    static const bool started = start();
    static_cast<void>(started);
}

MetadataField fieldOf(const Exiv2::Exifdatum& datum)
{
    return fieldWithKey(unambiguousKey(datum), datum);
}

MetadataField fieldOf(const Exiv2::Iptcdatum& datum)
{
    return fieldWithKey(datum.key(), datum);
}

void addField(Exiv2::ExifData& data, const MetadataField& field)
{
    const Exiv2::ExifKey key(field.key);
    // A remark's letters may be of two bytes, whose order follows that of the file.
    const bool isRemark = key.defaultTypeId() == Exiv2::comment && field.type == Exiv2::undefined;
    const auto value =
        Exiv2::Value::create(isRemark ? Exiv2::comment : static_cast<Exiv2::TypeId>(field.type));
    readInto(*value, field);
    data.add(key, value.get());
}

void addField(Exiv2::IptcData& data, const MetadataField& field)
{
    const Exiv2::IptcKey key(field.key);
    const auto value = Exiv2::Value::create(Exiv2::IptcDataSets::dataSetType(key.tag(), key.record()));
    readInto(*value, field);
    data.add(key, value.get());
}

} // namespace lumora
