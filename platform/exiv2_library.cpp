// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/exiv2_library.h"

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

void readInto(Exiv2::Value& value, const MetadataEntry& entry)
{
    value.read(bytesOf(entry.bytes), static_cast<long>(entry.bytes.size()), Exiv2::littleEndian);
}

} // namespace

void ensureExiv2Ready()
{
    static const bool started = start();
    static_cast<void>(started);
}

MetadataEntry entryOf(const Exiv2::Metadatum& datum)
{
    Exiv2::DataBuf buffer(datum.size());
    datum.copy(buffer.pData_, Exiv2::littleEndian);
    return {datum.key(), fieldTypeOf(datum.typeId()), textOf(buffer)};
}

void addEntry(Exiv2::ExifData& data, const MetadataEntry& entry)
{
    const auto value = Exiv2::Value::create(static_cast<Exiv2::TypeId>(entry.type));
    readInto(*value, entry);
    data.add(Exiv2::ExifKey(entry.key), value.get());
}

void addEntry(Exiv2::IptcData& data, const MetadataEntry& entry)
{
    const Exiv2::IptcKey key(entry.key);
    const auto value = Exiv2::Value::create(Exiv2::IptcDataSets::dataSetType(key.tag(), key.record()));
    readInto(*value, entry);
    data.add(key, value.get());
}

} // namespace lumora
