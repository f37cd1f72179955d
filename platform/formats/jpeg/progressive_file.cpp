// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/progressive_file.h"

#include "jpeg/zigzag.h"
#include "system/side_by_side.h"

#include <algorithm>
#include <array>
#include <initializer_list>

namespace lumora {
namespace {

using FileBytes = std::vector<std::byte>;

// Each has a code for itself. The last bit of most of brightness comes by itself: it is the noisiest.
constexpr FrequencyBand means{0, 0};
constexpr FrequencyBand broad{1, 2};
constexpr FrequencyBand fine{3, 63};
constexpr FrequencyBand all{1, 63};
constexpr std::array forms{ScanForm{0, means, 0, 0}, ScanForm{1, means, 0, 0}, ScanForm{2, means, 0, 0},
                           ScanForm{0, broad, 0, 0}, ScanForm{0, fine, 0, 1},  ScanForm{1, all, 0, 0},
                           ScanForm{2, all, 0, 0},   ScanForm{0, fine, 1, 0}};

void append(FileBytes& file, std::initializer_list<unsigned> bytes)
{
    for (const unsigned byte : bytes)
        file.push_back(static_cast<std::byte>(byte));
}

void appendMarker(FileBytes& file, unsigned marker, std::size_t contentSize)
{
    const auto length = static_cast<unsigned>(contentSize) + 2; // its own bytes count
    append(file, {0xFF, marker, length >> 8U, length & 0xFFU});
}

void appendProfile(FileBytes& file, std::string_view profile)
{
    constexpr std::string_view signature("ICC_PROFILE\0", 12);
    constexpr std::size_t mostInOne = 65519;
    const std::size_t count = (profile.size() + mostInOne - 1) / mostInOne;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string_view part = profile.substr(i * mostInOne, mostInOne);
        appendMarker(file, 0xE2, signature.size() + 2 + part.size());
        std::ranges::transform(signature, std::back_inserter(file), [](char c) { return std::byte(c); });
        append(file, {static_cast<unsigned>(i + 1), static_cast<unsigned>(count)});
        std::ranges::transform(part, std::back_inserter(file), [](char c) { return std::byte(c); });
    }
}

void appendSteps(FileBytes& file, unsigned component, const FrequencyTable<std::uint16_t>& steps)
{
    appendMarker(file, 0xDB, 1 + steps.size());
    append(file, {component});
    for (const std::uint8_t place : zigzag)
        append(file, {steps.at(place)});
}

void appendFrame(FileBytes& file, const CoefficientShape& shape)
{
    const auto components = static_cast<unsigned>(shape.components);
    appendMarker(file, 0xC2, 6 + 3 * components);
    constexpr unsigned bits = 8;
    append(file, {bits});
    for (const int edge : {shape.height, shape.width})
        append(file, {static_cast<unsigned>(edge) >> 8U, static_cast<unsigned>(edge) & 0xFFU});
    append(file, {components});
    for (unsigned i = 0; i < components; ++i)
        append(file, {i + 1, shape.hasHalvedChroma && i == 0 ? 0x22U : 0x11U, i});
}

FileBytes head(const CoefficientShape& shape, const StepTables& steps, std::string_view profile)
{
    FileBytes file;
    append(file, {0xFF, 0xD8});
    appendProfile(file, profile);
    for (unsigned i = 0; i < steps.size(); ++i)
        appendSteps(file, i, steps[i]);
    appendFrame(file, shape);
    return file;
}

// Both components of colour use the second table of either kind, one after the other.
FileBytes scanHead(const ScanForm& form, const HuffmanCode& code)
{
    FileBytes file;
    const unsigned table = form.component == 0 ? 0 : 1;
    appendMarker(file, 0xC4, 1 + code.countOfLength.size() + code.symbols.size());
    append(file, {form.tellsMeans() ? table : 0x10U | table});
    for (const unsigned count : code.countOfLength)
        append(file, {count});
    for (const unsigned symbol : code.symbols)
        append(file, {symbol});
    appendMarker(file, 0xDA, 6);
    append(file, {1, static_cast<unsigned>(form.component) + 1, form.tellsMeans() ? table << 4U : table,
                  static_cast<unsigned>(form.band.first), static_cast<unsigned>(form.band.last),
                  form.bitsBefore << 4U | form.bitsLeft});
    return file;
}

} // namespace

ProgressiveFile::ProgressiveFile(const CoefficientShape& shape) : m_shape(shape)
{
    for (const ScanForm& form : forms) {
        if (form.component < shape.components) m_scans.push_back({form, scanOf(form)});
    }
}

void ProgressiveFile::add(int component, const std::int16_t* blocks)
{
    for (int i = 0; i < m_shape.blocksAcross(component); ++i, blocks += 64) {
        const CoefficientBlock block = blockOf(blocks);
        for (const auto& [form, blockScan] : m_scans) {
            if (form.component == component) blockScan->add(block);
        }
    }
}

Status ProgressiveFile::write(const StepTables& steps, std::string_view profile, const JpegTaker& take)
{
    if (auto status = take(head(m_shape, steps, profile)); !status) return status;
    auto status = usedProcessors() > 1 ? writeScansSideBySide(take) : writeScans(take);
    if (!status) return status;
    FileBytes end;
    append(end, {0xFF, 0xD9});
    return take(end);
}

Status ProgressiveFile::writeScans(const JpegTaker& take)
{
    for (Scan& scan : m_scans) {
        if (auto status = write(std::move(scan), take); !status) return status;
    }
    return Done{};
}

Status ProgressiveFile::writeScansSideBySide(const JpegTaker& take)
{
    // Piece by piece, in the room of what has been forgotten.
    std::vector<std::vector<FileBytes>> written(m_scans.size());
    runSideBySide(m_scans.size(), [&](std::size_t i) {
        static_cast<void>(write(std::move(m_scans[i]), [&](std::span<const std::byte> bytes) -> Status {
            written[i].emplace_back(bytes.begin(), bytes.end());
            return Done{};
        }));
    });
    for (const auto& pieces : written) {
        for (const FileBytes& piece : pieces) {
            if (auto status = take(piece); !status) return status;
        }
    }
    return Done{};
}

Status ProgressiveFile::write(Scan scan, const JpegTaker& take)
{
    scan.blocks->finish();
    const HuffmanCode code = scan.blocks->symbols().code();
    if (auto status = take(scanHead(scan.form, code)); !status) return status;
    return scan.blocks->symbols().encode(code, take);
}

} // namespace lumora
