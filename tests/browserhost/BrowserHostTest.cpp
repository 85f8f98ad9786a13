#include "browserhost/HostRun.h"
#include "browserhost/TabReport.h"
#include "support/TemporaryFolder.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <poll.h>
#include <unistd.h>

using testing::EndsWith;
using testing::HasSubstr;

namespace quorvane {
namespace {

/// The real program between a browser and a tracker that the test plays.
class BrowserHostTest : public testing::Test {
protected:
    [[nodiscard]] std::filesystem::path socket() const { return folder_ / "quorvane/browser.sock"; }

    /// What the tracker gets of a page, as text.
    static std::string passedOn(const std::string& url, const std::string& title) {
        return fmt::format(R"({{"v":1,"pid":{},"url":"{}","title":"{}"}})", getpid(), url, title);
    }
    static std::string page(const std::string& url) {
        return nativeMessage(fmt::format(R"({{"v":1,"url":"{}","title":"T"}})", url));
    }

    TemporaryFolder folder_;
};

TEST_F(BrowserHostTest, PassesMessagesOnWithItsBrowserAndEndsWithTheInput) {
    ListeningTracker tracker(socket());
    HostRun host(folder_.path());
    const std::string first = nativeMessage(R"({"v":1,"url":"https://example.com/","title":"工作","tabId":[7,{}]})");
    for (const char byte : first)
        ASSERT_TRUE(host.write({&byte, 1}));
    EXPECT_EQ(tracker.next(), passedOn("https://example.com/", "工作"));
    host.write(nativeMessage(R"({"v":1,"private":true,"url":"https://secret.example/"})"));
    EXPECT_EQ(tracker.next(), fmt::format(R"({{"v":1,"pid":{},"private":true}})", getpid()));
    host.write(nativeMessage(R"({"v":1,"url":"a","title":"half)").substr(0, 20));
    const auto result = host.finish();
    EXPECT_EQ(tracker.next(), "the end") << "half a message is none";
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
}

TEST_F(BrowserHostTest, PassesOverWhatItDoesNotUnderstandAndSaysSoOnceWithoutTellingWhatItWas) {
    ListeningTracker tracker(socket());
    HostRun host(folder_.path());
    for (const std::string& bad :
         {std::string(), std::string("secret"), std::string("[1]"), std::string(R"({"url":"secret","title":""})"),
          std::string(R"({"v":2,"url":"secret","title":""})"), std::string(R"({"v":1,"url":"secret"})"),
          std::string(R"({"v":1,"url":5,"title":""})"), std::string(R"({"v":1,"private":"yes"})"),
          std::string("{\"v\":1,\"url\":\"secret\xff\",\"title\":\"\"}"), std::string(1 << 20, '['),
          std::string(1 << 20, '\0')})
        ASSERT_TRUE(host.write(nativeMessage(bad)));
    host.write(page("https://good.example/"));
    EXPECT_EQ(tracker.next(), passedOn("https://good.example/", "T"));
    const auto result = host.finish();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "quorvane-browser-host: a message was passed over: it is no JSON\n");
}

TEST_F(BrowserHostTest, RefusesALengthBeyondAMebibyteWithoutReadingOn) {
    for (const std::uint32_t length : {(1U << 20) + 1, 100'000'000U, UINT32_MAX}) {
        SCOPED_TRACE(length);
        HostRun host(folder_.path());
        std::string bytes(reinterpret_cast<const char*>(&length), sizeof length);
        host.write(bytes);
        // More than the pipe holds: it goes through only as long as somebody reads.
        EXPECT_FALSE(host.write(std::string(1 << 22, 'x')));
        const auto result = host.finish();
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.err,
                  fmt::format("quorvane-browser-host: a message of {} bytes is longer than 1048576\n", length));
    }
}

TEST_F(BrowserHostTest, ATrackerThatComesIsToldTheNewestAndOnlyThat) {
    HostRun host(folder_.path());
    host.write(page("https://lost.example/"));
    host.write(page("https://kept.example/"));
    for (int number = 0; number < 2; ++number)  // more than a pipe holds: afterwards the first one has been read
        ASSERT_TRUE(host.write(nativeMessage(std::string(1 << 17, ' '))));
    auto tracker = std::make_unique<ListeningTracker>(socket());
    EXPECT_EQ(tracker->next(), passedOn("https://kept.example/", "T"));
    EXPECT_EQ(tracker->next(100), "nothing");
    host.write(page("https://one.example/"));
    EXPECT_EQ(tracker->next(), passedOn("https://one.example/", "T"));
    tracker.reset();
    tracker = std::make_unique<ListeningTracker>(socket());
    EXPECT_EQ(tracker->next(), passedOn("https://one.example/", "T")) << "a tracker that was started anew";
    host.write(page("https://two.example/"));
    EXPECT_EQ(tracker->next(), passedOn("https://two.example/", "T"));
    EXPECT_EQ(host.finish().status, 0);
}

TEST_F(BrowserHostTest, OfAFloodTheNewestArrivesFewGoOnAndMemoryStaysBounded) {
    HostRun quiet(folder_.path());
    quiet.write(page("a"));
    const long usual = quiet.finish().mostMemory;

    ListeningTracker tracker(socket());
    HostRun host(folder_.path());
    std::string flood;
    for (int number = 1; number <= 100'000; ++number)
        flood += page(fmt::format("https://example.com/{}", number));
    ASSERT_TRUE(host.write(flood));
    const std::string last = passedOn("https://example.com/100000", "T");
    int count = 1;
    for (std::string message = tracker.next(); message != last; message = tracker.next(), ++count)
        ASSERT_THAT(message, HasSubstr("https://example.com/"));
    EXPECT_LT(count, 1000);
    EXPECT_EQ(tracker.next(100), "nothing");
    const auto result = host.finish();
    EXPECT_EQ(result.status, 0);
    EXPECT_LT(result.mostMemory, usual + 4096);
}

TEST_F(BrowserHostTest, ATrackerThatDoesNotReadHoldsNobodyUp) {
    ListeningTracker deaf(socket());
    HostRun host(folder_.path());
    const std::string large = page("https://example.com/" + std::string(8000, 'x'));
    for (int number = 0; number < 60; ++number) {
        ASSERT_TRUE(host.write(large));
        ::poll(nullptr, 0, 25);  // so that each of them goes on
    }
    EXPECT_EQ(host.finish().status, 0);
}

TEST(TabReportTest, CutsLongTextsButNoCharacter) {
    const auto text = [](std::size_t url, std::size_t title) {
        std::string words;
        for (std::size_t length = 0; length < title; length += 3)
            words += "工";
        return fmt::format(R"({{"v":1,"url":"{}","title":"{}"}})", std::string(url, 'x'), words);
    };
    const auto report = parseTabReport(text(10'000, 1200)).value();
    EXPECT_EQ(report.url, std::string(8192, 'x'));
    EXPECT_EQ(report.title.size(), 1023);
    EXPECT_THAT(report.title, EndsWith("工"));
    EXPECT_EQ(parseTabReport(text(8192, 1023)).value().url.size(), 8192);
}

TEST(TabReportTest, AMessageToTheTrackerNamesAProcess) {
    const BrowserMessage longest{.browser = INT32_MAX,
                                 .page = {.url = std::string(8192, '\x01'), .title = std::string(1024, '\x01')}};
    EXPECT_LE(longest.text().size(), BrowserMessage::longest);
    EXPECT_EQ(parseBrowserMessage(longest.text()), longest);
    const BrowserMessage secret{.browser = 7, .page = {.isPrivate = true}};
    EXPECT_EQ(parseBrowserMessage(secret.text()), secret);
    for (const char* process : {"0", "-1", "1.5", "\"7\"", "null", "4294967303", "18446744073709551615"}) {
        SCOPED_TRACE(process);
        EXPECT_EQ(parseBrowserMessage(fmt::format(R"({{"v":1,"pid":{},"private":true}})", process)), std::nullopt);
    }
}

}  // namespace
}  // namespace quorvane
