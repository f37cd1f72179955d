// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures that a test writes in some format, in a folder of its own.
#pragma once

#include "formats/image_destination.h"
#include "formats/image_source.h"
#include "pixels/decoding.h"
#include "pixels/drawing.h"
#include "system/atomic_file.h"
#include "tests/support/sample_images.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace lumora::test {

class WrittenPictures : public testing::Test
{
protected:
    Image redrawn(const Pixels& pixels)
    {
        save(m_folder / "source.png", pixels);
        const auto source = ImageSource::open(m_folder / "source.png");
        EXPECT_TRUE(source);
        auto image = decode(*draw(source->image(), {pixels.width, pixels.height, ColorSpace::deviceRGB}));
        EXPECT_TRUE(image);
        return *image;
    }

    // In memory with the depth, model and profile of the file, which the name says the type of.
    Image asStored(const Pixels& pixels, const SaveOptions& options = {},
                   const std::string& name = "source.png")
    {
        save(m_folder / name, pixels, options);
        return asStored(m_folder / name);
    }
    static Image asStored(const std::filesystem::path& file)
    {
        const auto source = ImageSource::open(file);
        EXPECT_TRUE(source);
        auto image = decode(source->image());
        EXPECT_TRUE(image);
        return *image;
    }

    std::filesystem::path written(const Image& image, const std::string& type, double quality = 0.82,
                                  const Metadata& metadata = {})
    {
        auto file = m_folder / ("out" + std::to_string(++m_count));
        auto output = AtomicFile::create(file);
        EXPECT_TRUE(output);
        auto destination = ImageDestination::create(*output, type);
        EXPECT_TRUE(destination);
        destination->addImage(image, {metadata, quality});
        const auto status = destination->finalize();
        EXPECT_TRUE(status) << status.error().description;
        EXPECT_TRUE(status && output->commit());
        return file;
    }

    TemporaryDirectory m_folder;
    int m_count = 0;
};

// One field of each group that most containers hold.
inline Metadata someMetadata()
{
    return {.exif = {{"Exif.Photo.LensModel", 2, std::string("A lens\0", 7)}},
            .gps = {{"Exif.GPSInfo.GPSLatitudeRef", 2, std::string("N\0", 2)}},
            .tiff = {{"Exif.Image.Make", 2, std::string("Maker\0", 6)}},
            .iptc = {{"Iptc.Application2.Keywords", 6, "harbour"}},
            .xmp =
                "<x:xmpmeta xmlns:x='adobe:ns:meta/'><rdf:RDF "
                "xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'><rdf:Description "
                "xmlns:dc='http://purl.org/dc/elements/1.1/' dc:source='some words'/></rdf:RDF></x:xmpmeta>"};
}

// The raw value; "none" without the field.
inline std::string valueOf(const MetadataFields& fields, const std::string& key)
{
    for (const MetadataField& field : fields) {
        if (field.key == key) return field.bytes;
    }
    return "none";
}

// Whether what a file says holds all of someMetadata(); without IPTC where the container has no place for it.
inline void expectSomeMetadata(const Metadata& metadata, bool holdsIptc = true)
{
    const Metadata expected = someMetadata();
    EXPECT_EQ(valueOf(metadata.exif, expected.exif[0].key), expected.exif[0].bytes);
    EXPECT_EQ(valueOf(metadata.gps, expected.gps[0].key), expected.gps[0].bytes);
    EXPECT_EQ(valueOf(metadata.tiff, expected.tiff[0].key), expected.tiff[0].bytes);
    EXPECT_EQ(valueOf(metadata.iptc, expected.iptc[0].key), holdsIptc ? "harbour" : "none");
    EXPECT_NE(metadata.xmp.find("some words"), std::string::npos);
}

} // namespace lumora::test
