// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "xmp_effort.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace lumora {
namespace {

constexpr std::uint64_t mostComparisons = 20'000'000; // a third of a second
constexpr std::uint64_t mostProperties = 300'000;     // some seconds
constexpr std::size_t mostDepth = 100;

// Walks through the tags of a packet as far as it has to, which is not all that XML allows: what it misreads,
// the library refuses or reads in no less time.
class TagWalk
{
public:
    explicit TagWalk(std::string_view packet) : m_left(packet) {}

    bool isReasonable()
    {
        while (skipTo('<')) {
            if (skipPast("<!--", "-->") || skipPast("<![CDATA[", "]]>") || skipPast("<?", "?>")) continue;
            m_left.starts_with("</") ? close() : open();
            if (m_comparisons > mostComparisons || m_properties > mostProperties ||
                m_children.size() > mostDepth)
                return false;
        }
        return true;
    }

private:
    bool skipTo(char letter)
    {
        const std::size_t at = m_left.find(letter);
        m_left.remove_prefix(std::min(at, m_left.size()));
        return at != std::string_view::npos;
    }

    bool skipPast(std::string_view start, std::string_view end)
    {
        if (!m_left.starts_with(start)) return false;
        const std::size_t at = m_left.find(end, start.size());
        m_left.remove_prefix(at == std::string_view::npos ? m_left.size() : at + end.size());
        return true;
    }

    void close()
    {
        skipTo('>');
        if (!m_children.empty()) m_children.pop_back();
    }

    void open()
    {
        std::string_view name = m_left.substr(1, m_left.find_first_of(" \t\r\n/>", 1) - 1);
        name.remove_prefix(std::min(name.rfind(':') + 1, name.size()));
        // Items are reached by their number.
        ++m_properties;
        if (name != "li" && !m_children.empty()) countChild();
        // What several descriptions say at the top is said of one and the same thing.
        constexpr std::size_t topLevel = 2;
        const bool isTop = name == "Description" && m_children.size() <= topLevel;
        m_children.push_back(isTop ? &m_top : nullptr);
        m_own.resize(std::max(m_own.size(), m_children.size()));
        m_own[m_children.size() - 1] = 0;
        if (skipAttributes()) m_children.pop_back();
    }

    void countChild()
    {
        std::uint64_t* const shared = m_children.back();
        ++m_properties;
        m_comparisons += (shared ? *shared : m_own[m_children.size() - 1])++;
    }

    // Whether the tag closes itself.
    bool skipAttributes()
    {
        char last = 0;
        while (!m_left.empty() && m_left.front() != '>') {
            last = m_left.front();
            m_left.remove_prefix(1);
            if (last != '"' && last != '\'') continue;
            countChild();
            skipTo(last);
            m_left.remove_prefix(std::min<std::size_t>(1, m_left.size()));
        }
        return last == '/';
    }

    std::string_view m_left;
    std::vector<std::uint64_t*> m_children; // of each open element; null for a count of its own
    std::vector<std::uint64_t> m_own;
    std::uint64_t m_top = 0;
    std::uint64_t m_comparisons = 0;
    std::uint64_t m_properties = 0;
};

} // namespace

bool isReasonableXmp(std::string_view packet)
{
    return TagWalk(packet).isReasonable();
}

} // namespace lumora
