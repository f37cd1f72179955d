// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/local/left_behind.h"

#include "metadata/metadata_parts.h"
#include "types/format.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace lumora::ImageOptimizer {
namespace {

constexpr int plainBits = 8;

// A name of the output's type, as people know it.
std::string nameOf(const Format& format)
{
    if (format.writtenBy == WrittenBy::externalEncoder) return "WebP";
    std::string name(format.preferredExtension);
    std::ranges::transform(name, name.begin(),
                           [](char c) { return c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c; });
    return name;
}

bool isTransparent(const Image& image)
{
    return image.outcome() && image.outcome()->hasTransparency();
}

class Losses
{
public:
    Losses(const ImageSource& source, const Format& format, const OptimizerSettings& settings)
        : m_source(source), m_format(format), m_settings(settings)
    {
    }

    void addPictures()
    {
        const SourceFacts& facts = m_source.facts();
        if (facts.pictures <= 1) return;
        const std::string count = std::to_string(facts.pictures);
        switch (facts.series) {
        case SourceFacts::Series::frames:
            return add("Only the first of " + count + " frames");
        case SourceFacts::Series::pages:
            return add("Only the first of " + count + " pages");
        case SourceFacts::Series::pictures:
            return add("Only one of " + count + " pictures");
        }
    }

    void addTransparency(const Image& image)
    {
        if (!m_source.facts().hasAlpha || m_format.limits.holdsAlpha || !isTransparent(image)) return;
        const bool isWebp = m_format.writtenBy == WrittenBy::externalEncoder;
        add(isWebp ? "Transparency became black" : "Transparency became white");
    }

    // Whether anything can be missing that only a look into the new file tells.
    bool mustCompare() const
    {
        return m_source.facts().bits > plainBits || !m_settings.removeMetadata || keepsProfile();
    }

    void addWhatLacks(const ImageSource& written)
    {
        if (m_source.facts().bits > plainBits && written.facts().bits < m_source.facts().bits)
            add(std::to_string(m_source.facts().bits) + " bits became " +
                std::to_string(written.facts().bits));
        if (keepsProfile() && written.metadata().profileName != m_source.metadata().profileName)
            add("Colour profile not kept: " + nameOf(m_format));
        if (!m_settings.removeMetadata) addMetadata(missingParts(m_source.metadata(), written.metadata()));
    }

    void addGainMap()
    {
        if (m_source.facts().hasGainMap) add("HDR gain map dropped");
    }

    std::vector<std::string> clauses() const { return m_clauses; }

private:
    void add(std::string clause) { m_clauses.push_back(std::move(clause)); }

    // Colours that were converted need the source's profile no more.
    bool keepsProfile() const
    {
        return !m_settings.removeColorManagement && !m_settings.optimizeColorForSharing &&
               !m_source.metadata().profileName.empty();
    }

    void addMetadata(const MetadataParts& missing)
    {
        if (missing.empty()) return;
        std::string names;
        for (const MetadataPart part : missing)
            names.append(names.empty() ? "" : ", ").append(lumora::nameOf(part));
        const bool holdsNone = m_format.writtenBy == WrittenBy::externalEncoder;
        add("Metadata not kept: " + (holdsNone ? nameOf(m_format) : names));
    }

    const ImageSource& m_source;
    const Format& m_format;
    const OptimizerSettings& m_settings;
    std::vector<std::string> m_clauses;
};

} // namespace

std::vector<std::string> leftBehind(const ImageSource& source, const Image& image,
                                    const std::string& typeIdentifier, FileDescriptor written,
                                    const OptimizerSettings& settings)
{
    const Format* const format = formatWithIdentifier(typeIdentifier);
    if (!format) return {};
    Losses losses(source, *format, settings);
    losses.addPictures();
    losses.addTransparency(image);
    if (losses.mustCompare()) {
        if (const auto copy = ImageSource::open(std::move(written))) losses.addWhatLacks(*copy);
    }
    losses.addGainMap();
    return losses.clauses();
}

} // namespace lumora::ImageOptimizer
