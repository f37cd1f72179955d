// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// An output type that is known and that whoever works on the pixels cannot write.
#include "engine/local/local_picture_work.h"
#include "tests/engine/optimizer_test.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

using ImageOptimizer::PictureSize;
using ImageOptimizer::WorkError;
using ImageOptimizer::WorkResult;

class WithoutEncoders : public ImageOptimizer::LocalPictureWork
{
public:
    WorkResult<PictureSize> encode(int, const std::string&) override
    {
        return WorkError{WorkError::Kind::unsupported};
    }
};

class UnsupportedOutput : public test::OptimizerTest
{
protected:
    UnsupportedOutput()
    {
        m_services.pixels = [](const std::stop_token&) { return std::make_unique<WithoutEncoders>(); };
    }
};

TEST_F(UnsupportedOutput, IsNamedAndLeavesNothingBehind)
{
    EXPECT_EQ(failureOf(photo("a.png"), {.outputFormat = OutputFormat::heic}),
              "HEIC is not supported by this macOS ImageIO installation.");
    EXPECT_EQ(filesIn(m_in), 1u);
}

// The input is the likelier culprit: it is looked at before the machine is blamed.
TEST_F(UnsupportedOutput, OfADamagedPictureIsADamagedPicture)
{
    const auto file = photo("a.png");
    std::filesystem::resize_file(file, std::filesystem::file_size(file) / 2);
    EXPECT_EQ(failureOf(file, {.outputFormat = OutputFormat::heic}), "The image could not be read.");
}

} // namespace
} // namespace lumora
