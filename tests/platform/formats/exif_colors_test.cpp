// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "exif_colors.h"

#include "pixels/row_reader.h"
#include "tests/platform/formats/written_pictures.h"
#include "tests/support/program_output.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

class ExifColors : public test::WrittenPictures
{
protected:
    std::filesystem::path pictureWith(const std::string& name,
                                      const std::vector<std::pair<std::string, std::string>>& tags,
                                      const std::string& profile = {})
    {
        test::save(m_folder / name, test::uniformPicture(16, 16, {200, 100, 50}), {.profile = profile});
        for (const auto& [tag, value] : tags)
            test::writeTag(m_folder / name, tag, value);
        return m_folder / name;
    }
    static std::vector<int> inSrgb(const std::filesystem::path& file)
    {
        const auto source = ImageSource::open(file);
        const auto drawn = draw(source->image(), {16, 16, ColorSpace::deviceRGB});
        auto rows = RowReader::open(*drawn);
        const auto first = rows->rows(0, 1);
        const std::uint8_t* pixel = first->first;
        return {pixel[0], pixel[1], pixel[2]};
    }
    static void expectNear(const std::vector<int>& found, const std::vector<int>& wanted)
    {
        for (std::size_t c = 0; c < 3; ++c)
            EXPECT_NEAR(found.at(c), wanted.at(c), 3) << c;
    }
};

constexpr std::array<int, 3> asAdobeRgb{227, 100, 42};

TEST_F(ExifColors, OfACameraThatSaysAdobeRgb)
{
    const std::vector<std::pair<std::string, std::string>> adobe{{"ColorSpace#", "65535"},
                                                                 {"InteropIndex#", "R03"}};
    expectNear(inSrgb(pictureWith("a.jpg", adobe)), {asAdobeRgb.begin(), asAdobeRgb.end()});
    expectNear(inSrgb(pictureWith("b.jpg", {{"ColorSpace#", "1"}, {"InteropIndex#", "R03"}})),
               {200, 100, 50});
    expectNear(inSrgb(pictureWith("c.jpg", {{"ColorSpace#", "65535"}})), {200, 100, 50});
    expectNear(inSrgb(pictureWith("d.jpg", adobe, "srgb")), {200, 100, 50});
}

TEST_F(ExifColors, OfATiffWithPrimaries)
{
    expectNear(inSrgb(pictureWith("a.tif", {{"WhitePoint", "0.3127 0.329"},
                                            {"PrimaryChromaticities", "0.64 0.33 0.21 0.71 0.15 0.06"}})),
               {asAdobeRgb.begin(), asAdobeRgb.end()});
    expectNear(inSrgb(pictureWith("b.tif", {{"WhitePoint", "0.3127 0.329"},
                                            {"PrimaryChromaticities", "0.64 0.33 0.3 0.6 0.15 0.06"}})),
               {200, 100, 50});
    expectNear(
        inSrgb(pictureWith("c.tif", {{"WhitePoint", "0 0"}, {"PrimaryChromaticities", "0 0 0 0 0 0"}})),
        {200, 100, 50});
}

} // namespace
} // namespace lumora
