// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Small files that claim to be large.
#include "formats/image_source.h"
#include "tests/support/sample_images.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

namespace lumora {
namespace {

long peakKilobytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

TEST(HostilePng, WhoseTextClaimsGigabytesIsRefusedWithoutThem)
{
    const test::TemporaryDirectory folder;
    test::save(folder / "a.png", test::uniformPicture(9, 9, {1, 2, 3}));
    std::string png = test::readBytes(folder / "a.png");
    png.insert(33, std::string("\x70\0\0\0iTXtTitle\0\0\0\0\0", 18)); // behind the header
    test::writeText(folder / "a.png", png);
    const long before = peakKilobytes();
    EXPECT_FALSE(ImageSource::open(folder / "a.png"));
    EXPECT_LT(peakKilobytes() - before, 500'000);
}

} // namespace
} // namespace lumora
