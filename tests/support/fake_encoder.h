// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A test with an application directory of its own, whose WebP encoder is a script that the test writes, and a
// folder for temporary files of its own.
#pragma once

#include "tests/support/sample_images.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace lumora::test {

class EncoderTest : public testing::Test
{
protected:
    EncoderTest()
    {
        std::filesystem::create_directories(m_bundle / "Contents" / "MacOS");
        std::filesystem::create_directories(m_temporary);
        setOverride(bundled());
        setenv("TMPDIR", m_temporary.c_str(), 1);
    }
    ~EncoderTest() override
    {
        unsetenv("LUMORA_CWEBP_PATH");
        unsetenv("TMPDIR");
    }

    std::filesystem::path script(const std::string& name, const std::string& body,
                                 const std::string& interpreter = "#!/bin/sh")
    {
        return writeScript(m_folder / name, body, interpreter);
    }
    void installBundled(const std::string& body) { writeScript(bundled(), body, "#!/bin/sh"); }
    // The distribution's own encoder.
    void installReal()
    {
        std::filesystem::remove(bundled());
        std::filesystem::create_symlink("/usr/bin/cwebp", bundled());
    }
    // An encoder whose output is this file, whatever it is given; then it does what else is asked.
    void installWriting(const std::filesystem::path& file, const std::string& more = "")
    {
        installBundled("while [ \"$1\" != -o ]; do shift; done; cp '" + file.string() + "' \"$2\"" +
                       (more.empty() ? "" : "; " + more));
    }
    // A whole WebP of a single colour in exactly so many bytes, of which some are of a chunk that no reader
    // knows.
    std::filesystem::path webpOfSize(int width, int height, std::size_t size)
    {
        auto file = m_folder / ("padded" + std::to_string(size) + ".webp");
        save(file, uniformPicture(width, height, {9, 9, 9}));
        std::string bytes = readBytes(file);
        const std::size_t padding = size - bytes.size() - 8;
        bytes += "PADD" + littleEndian(padding) + std::string(padding, '\0');
        bytes.replace(4, 4, littleEndian(size - 8));
        writeText(file, bytes);
        return file;
    }
    void setOverride(const std::filesystem::path& encoder)
    {
        setenv("LUMORA_CWEBP_PATH", encoder.c_str(), 1);
    }

    std::filesystem::path bundled() const { return m_bundle / "Contents" / "MacOS" / "cwebp"; }

    TemporaryDirectory m_folder;
    std::filesystem::path m_bundle = m_folder / "Bundle";
    std::filesystem::path m_temporary = m_folder / "tmp";

private:
    static std::string littleEndian(std::size_t number)
    {
        std::string bytes;
        for (const unsigned shift : {0U, 8U, 16U, 24U})
            bytes += static_cast<char>(number >> shift & 0xFFU);
        return bytes;
    }
    static std::filesystem::path writeScript(const std::filesystem::path& file, const std::string& body,
                                             const std::string& interpreter)
    {
        std::filesystem::remove(file); // it may be a link to the real encoder
        writeText(file, interpreter + "\n" + body + "\n");
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
        return file;
    }
};

} // namespace lumora::test
