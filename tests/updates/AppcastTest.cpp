#include "updates/Appcast.h"

#include "support/Matching.h"
#include "updates/SignedFeed.h"

#include <fmt/format.h>

namespace quorvane {

// NOLINTNEXTLINE(readability-identifier-naming): the name that the test library looks for
void PrintTo(const AppcastItem& item, std::ostream* out) {
    *out << describe(item.version) << " / " << item.link << " / " << item.notes;
}

namespace {

TEST(AppcastTest, ReadsWhatItemsSayInElementsOrAtTheirEnclosure) {
    const auto items = Appcast::parse("\xEF\xBB\xBF" + feedOf(R"(
        <item>
            <link> https://example.org/1.2 </link>
            <v:shortVersionString>1.2</v:shortVersionString><v:version>345</v:version>
            <description>Faster &amp; <b>calmer</b><![CDATA[, <i>too</i>]]></description>
            <v:minimumSystemVersion>99</v:minimumSystemVersion>
        </item>
        <item>
            <description>更新</description>
            <enclosure url="https://example.org/1.1.deb" v:shortVersionString="1.1" v:version="344" length="1"/>
        </item>
        <item><version>1.0</version></item>
        <item/>)"));
    EXPECT_THAT(
        items,
        ElementsAre(AppcastItem{.version = {"1.2", "345"},
                                .link = "https://example.org/1.2",
                                .notes = "Faster & calmer, <i>too</i>"},
                    AppcastItem{.version = {"1.1", "344"}, .link = "https://example.org/1.1.deb", .notes = "更新"},
                    AppcastItem{.version = {"1.0", "0"}}, AppcastItem{.version = {"", "0"}}));
}

TEST(AppcastTest, TheNewestItemIsFoundWhereverItStands) {
    const auto items = Appcast::parse(feedOf(feedItem("nightly", "9") + feedItem("1.9", "7") + feedItem("1.10", "8") +
                                             feedItem("1.10", "6") + feedItem("1.2", "99")));
    const auto* const newest = Appcast::newest(items);
    ASSERT_NE(newest, nullptr);
    EXPECT_EQ(newest->version, (ReleaseVersion{"1.10", "8"}));
    EXPECT_EQ(Appcast::newest(Appcast::parse(feedOf(feedItem("nightly", "1")))), nullptr);
}

std::string refusal(std::string_view xml) {
    try {
        return fmt::format("{} items", Appcast::parse(xml).size());
    } catch (const AppcastError& error) {
        return error.what();
    }
}

TEST(AppcastTest, RefusesWhatIsNoFeed) {
    const std::string laughs = R"(<?xml version="1.0"?><!DOCTYPE rss [<!ENTITY a "ha"><!ENTITY b "&a;&a;&a;">]>)"
                               "<rss><channel><item><title>&b;</title></item></channel></rss>";
    const std::string whole = feedOf(feedItem("1.0", "1"));
    const std::tuple<const char*, std::string, const char*> rows[] = {
        {"entities", laughs, "it declares a document type"},
        {"a file of the machine", "<!DOCTYPE rss SYSTEM \"file:///etc/passwd\"><rss><channel/></rss>",
         "it declares a document type"},
        {"HTML", "<!DOCTYPE html><html><body>Log in<br></body></html>", "it declares a document type"},
        {"HTML of old", "<HTML><body><p>Log in<br></body></HTML>", "it is no XML: Start-end tags mismatch at byte 27"},
        {"well-formed HTML", "<html><body/></html>", "it is no feed: rss or its channel is missing"},
        {"no channel", "<rss/>", "it is no feed: rss or its channel is missing"},
        {"Latin-1", "<rss><channel><title>\xE9</title></channel></rss>", "it is not in UTF-8"},
        {"UTF-16", std::string("<\0r\0s\0s\0/\0>\0", 12), "it is not in UTF-8"},
        {"cut off", whole.substr(0, whole.size() - 20), "it is no XML: Start-end tags mismatch at byte 350"},
        {"nothing", "", "it is no XML: No document element found at byte 0"},
        {"JSON", "{\"items\": []}", "it is no XML: No document element found at byte 13"},
    };
    for (const auto& [name, xml, expected] : rows)
        EXPECT_EQ(refusal(xml), expected) << name;
}

TEST(AppcastTest, ADeepFeedTakesNoStack) {
    std::string notes;
    for (int i = 0; i < 300'000; ++i)
        notes += "<a>";
    EXPECT_THAT(refusal("<rss><channel><item><description>" + notes), StartsWith("it is no XML: "));
    notes += "x";
    for (int i = 0; i < 300'000; ++i)
        notes += "</a>";
    EXPECT_EQ(refusal(feedOf("<item><description>" + notes + "</description></item>")), "1 items");
}

}  // namespace
}  // namespace quorvane
