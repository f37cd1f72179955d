// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "xmp_effort.h"

#include <gtest/gtest.h>

#include <string>

namespace lumora {
namespace {

std::string repeated(int count, const std::string& before, const std::string& after = {})
{
    std::string text;
    for (int i = 0; i < count; ++i)
        text.append(before).append(after.empty() ? "" : std::to_string(i)).append(after);
    return text;
}

std::string packetOf(const std::string& properties)
{
    return "<?xpacket begin=''?><x:xmpmeta><rdf:RDF><rdf:Description>" + properties +
           "</rdf:Description></rdf:RDF></x:xmpmeta><?xpacket end='w'?>";
}

TEST(ReasonableXmp, IsWhatProgramsWrite)
{
    EXPECT_TRUE(isReasonableXmp(""));
    EXPECT_TRUE(isReasonableXmp(packetOf(repeated(1000, "<a:p", ">v</a:p>"))));
    EXPECT_TRUE(isReasonableXmp(packetOf("<a:p>" + std::string(5'000'000, 'x') + "</a:p>")));
    EXPECT_TRUE(isReasonableXmp(
        packetOf("<a:p><rdf:Bag>" + repeated(100'000, "<rdf:li>v</rdf:li>") + "</rdf:Bag></a:p>")));
    EXPECT_TRUE(isReasonableXmp(packetOf("<a:p><rdf:Seq>" +
                                         repeated(30'000, "<rdf:li s:action='saved' s:when='2020'/>") +
                                         "</rdf:Seq></a:p>")));
}

TEST(ReasonableXmp, HasNotThousandsOfPropertiesInOnePlace)
{
    EXPECT_FALSE(isReasonableXmp(packetOf(repeated(60'000, "<a:p", ">v</a:p>"))));
    EXPECT_FALSE(isReasonableXmp(packetOf(repeated(60'000, "<a:p", "/>"))));
    EXPECT_FALSE(
        isReasonableXmp("<x:xmpmeta><rdf:RDF><rdf:Description " + repeated(60'000, " a:p", "='v'") + "/>"));
    // Several descriptions are of one and the same thing.
    EXPECT_FALSE(isReasonableXmp("<x:xmpmeta><rdf:RDF>" + repeated(60'000, "<rdf:Description a:p", "='v'/>") +
                                 "</rdf:RDF>"));
    EXPECT_FALSE(
        isReasonableXmp(packetOf("<a:p><rdf:Bag>" + repeated(400'000, "<rdf:li/>") + "</rdf:Bag></a:p>")));
}

TEST(ReasonableXmp, IsNotNestedWithoutEnd)
{
    EXPECT_TRUE(isReasonableXmp(packetOf(repeated(20, "<a:p>") + repeated(20, "</a:p>"))));
    EXPECT_FALSE(isReasonableXmp(packetOf(repeated(200, "<a:p>") + repeated(200, "</a:p>"))));
}

TEST(ReasonableXmp, IsNotJudgedByWhatIsNoTag)
{
    const std::string tags = repeated(60'000, "<a:p", ">v</a:p>");
    EXPECT_TRUE(isReasonableXmp(packetOf("<!-- " + tags + " -->")));
    EXPECT_TRUE(isReasonableXmp(packetOf("<a:p><![CDATA[" + tags + "]]></a:p>")));
    EXPECT_TRUE(isReasonableXmp("<!-- never ends " + tags));
    EXPECT_TRUE(isReasonableXmp("</></></><"));
}

} // namespace
} // namespace lumora
