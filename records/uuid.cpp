// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "records/uuid.h"

#include <random>

namespace lumora {

Uuid Uuid::random()
{
    // One generator a thread: seeding costs a system call, and 128 bits of it are enough against a repeat.
    thread_local std::mt19937_64 generator{[] {
        std::random_device device;
        std::seed_seq seed{device(), device(), device(), device(), device(), device(), device(), device()};
        return std::mt19937_64(seed);
    }()};

    Uuid uuid;
    for (std::size_t half = 0; half < 2; ++half) {
        std::uint64_t bits = generator();
        for (std::size_t i = 0; i < 8; ++i, bits >>= 8) {
            uuid.m_bytes.at(half * 8 + i) = static_cast<std::uint8_t>(bits & 0xFFU);
        }
    }
    uuid.m_bytes[6] = static_cast<std::uint8_t>((uuid.m_bytes[6] & 0x0FU) | 0x40U);
    uuid.m_bytes[8] = static_cast<std::uint8_t>((uuid.m_bytes[8] & 0x3FU) | 0x80U);
    return uuid;
}

std::string Uuid::toString() const
{
    constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    text.reserve(36);
    for (std::size_t i = 0; i < m_bytes.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
        text += digits[m_bytes.at(i) >> 4U];
        text += digits[m_bytes.at(i) & 0x0FU];
    }
    return text;
}

} // namespace lumora
