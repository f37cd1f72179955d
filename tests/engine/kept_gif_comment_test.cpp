// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What a GIF carries beside its picture, as an independent reader finds it.
#include "engine/image_optimizer.h"
#include "tests/engine/local_services.h"
#include "tests/support/program_output.h"
#include "tests/support/sample_images.h"
#include "tests/support/settings.h"
#include "tests/support/temporary_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lumora {
namespace {

using test::settings;
using test::tagOf;
using testing::HasSubstr;
using testing::Not;

class OptimizedGif : public testing::Test
{
protected:
    std::filesystem::path withRemark(const std::string& remark)
    {
        test::save(m_folder / "a.gif", test::corneredPicture(64, 48));
        test::writeTag(m_folder / "a.gif", "Comment", remark);
        return m_folder / "a.gif";
    }

    std::filesystem::path optimized(const std::filesystem::path& file, bool removesMetadata,
                                    std::int64_t bound = 2560)
    {
        const auto result = ImageOptimizer::optimize(file,
                                                     settings({.maximumPixels = bound,
                                                               .outputFormat = OutputFormat::original,
                                                               .removeMetadata = removesMetadata}),
                                                     test::localServices());
        return *result.outputURL;
    }

    test::TemporaryDirectory m_folder;
};

TEST_F(OptimizedGif, KeepsItsRemarkWithTheOtherMetadata)
{
    for (const std::string& remark : {std::string("seen from the harbour"), std::string(600, 'x')}) {
        const auto source = withRemark(remark);
        EXPECT_EQ(tagOf(optimized(source, false), "Comment"), remark + "\n");
        EXPECT_EQ(tagOf(optimized(source, true), "Comment"), "");
    }
}

// A sample as the image library writes it has such a block.
TEST_F(OptimizedGif, IsAStillPictureWithoutALoop)
{
    const auto source = withRemark("a remark");
    ASSERT_THAT(test::readBytes(source), HasSubstr("NETSCAPE2.0"));
    EXPECT_THAT(test::readBytes(optimized(source, false)), Not(HasSubstr("NETSCAPE2.0")));
    EXPECT_THAT(test::readBytes(optimized(source, false, 50)), Not(HasSubstr("NETSCAPE2.0")));
}

} // namespace
} // namespace lumora
