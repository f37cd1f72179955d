// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Outputs of which an encoder says that they are whole, and whose last rows are missing.
#include "engine/local/local_picture_work.h"
#include "tests/engine/optimizer_test.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace lumora {
namespace {

using ImageOptimizer::PictureSize;
using ImageOptimizer::WorkResult;

class CuttingEncoders : public ImageOptimizer::LocalPictureWork
{
public:
    WorkResult<PictureSize> encode(int output, const std::string& typeIdentifier) override
    {
        auto size = LocalPictureWork::encode(output, typeIdentifier);
        struct stat status = {};
        EXPECT_EQ(fstat(output, &status), 0);
        EXPECT_EQ(ftruncate(output, status.st_size * 9 / 10), 0);
        return size;
    }
};

class DamagedOutput : public test::OptimizerTest, public testing::WithParamInterface<OutputFormat>
{
protected:
    DamagedOutput()
    {
        m_services.pixels = [](const std::stop_token&) { return std::make_unique<CuttingEncoders>(); };
    }
};

TEST_P(DamagedOutput, TakesNoOriginalAlong)
{
    const auto file = photo("a.bmp");
    EXPECT_TRUE(failureOf(file, {.outputFormat = GetParam(), .moveOriginalToTrash = true})
                    .starts_with("Could not finish writing a"));
    EXPECT_EQ(filesIn(m_in), 1u);
    EXPECT_TRUE(std::filesystem::exists(file));
}

INSTANTIATE_TEST_SUITE_P(Formats, DamagedOutput,
                         testing::Values(OutputFormat::jpeg, OutputFormat::png, OutputFormat::heic,
                                         OutputFormat::original),
                         [](const auto& instance) { return std::string(rawValue(instance.param)); });

} // namespace
} // namespace lumora
