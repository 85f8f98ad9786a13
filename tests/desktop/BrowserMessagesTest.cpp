#include "platform/linux/browsers/BrowserMessages.h"
#include "browserhost/BrowserSocket.h"
#include "browserhost/TabReport.h"
#include "desktop/support/BoundSocket.h"
#include "desktop/support/Waiting.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "support/Matching.h"
#include "support/OtherProcess.h"
#include "support/TemporaryFolder.h"

#include <QCoreApplication>
#include <atomic>
#include <sys/stat.h>
#include <thread>

namespace quorvane::platform {
namespace {

/// A host that says what a test lets it say.
class Host {
public:
    explicit Host(const std::filesystem::path& socket) : descriptor_(BrowserSocket::make()) {
        isConnected = BrowserSocket::connect(descriptor_, BrowserSocket::address(socket).value());
    }
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;
    ~Host() { close(descriptor_); }

    /// False if it has been turned away or can't say more at once.
    bool say(const std::string& text) const {
        return send(descriptor_, text.data(), text.size(), MSG_NOSIGNAL | MSG_DONTWAIT) >= 0;
    }
    bool say(std::int64_t browser, const std::string& url, const std::string& title) const {
        return say(BrowserMessage{.browser = browser, .page = {.url = url, .title = title}}.text());
    }

    bool isConnected = false;

private:
    int descriptor_;
};

mode_t permissions(const std::filesystem::path& path) {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0 ? status.st_mode & 0777 : 0;
}

class BrowserMessagesTest : public testing::Test {
protected:
    std::unique_ptr<BrowserMessages> listen() {
        return std::make_unique<BrowserMessages>(socket(), [this](const std::string& line) { lines_.push_back(line); });
    }
    [[nodiscard]] std::filesystem::path socket() const { return folder_ / "quorvane/browser.sock"; }

    QtRunLoop runLoop_;
    TemporaryFolder folder_;
    std::vector<std::string> lines_;
};

TEST_F(BrowserMessagesTest, TheLastPageOfABrowserAnswersForAWindowThatBeginsWithItsTitle) {
    const auto messages = listen();
    ASSERT_EQ(messages->problem(), "");
    const Host chromium(socket());
    const Host firefox(socket());
    EXPECT_FALSE(messages->knows(10));
    chromium.say(10, "https://a.example/", "Inbox");
    chromium.say(10, "https://b.example/", "News");
    firefox.say(20, "https://c.example/", "Inbox");
    ASSERT_TRUE(waitUntil([&] { return messages->knows(10) && messages->knows(20); }));
    const std::tuple<std::int64_t, const char*, std::optional<std::string>> rows[] = {
        {10, "News - Chromium", "https://b.example/"},
        {10, "News", "https://b.example/"},
        {10, "Inbox - Chromium", std::nullopt},
        {10, "The News - Chromium", std::nullopt},
        {10, "", std::nullopt},
        {20, "Inbox — Mozilla Firefox", "https://c.example/"},
        {30, "Inbox", std::nullopt}};
    for (const auto& [process, title, url] : rows)
        EXPECT_EQ(messages->url(process, title), url) << title;
    EXPECT_THAT(lines_, IsEmpty());
}

TEST_F(BrowserMessagesTest, APrivateWindowEndsThePageBeforeAndSoDoesTheEndOfTheHost) {
    const auto messages = listen();
    auto host = std::make_unique<Host>(socket());
    host->say(10, "https://a.example/", "A");
    ASSERT_TRUE(waitUntil([&] { return messages->url(10, "A") == "https://a.example/"; }));
    host->say(BrowserMessage{.browser = 10, .page = {.isPrivate = true}}.text());
    ASSERT_TRUE(waitUntil([&] { return !messages->url(10, "A"); }));
    EXPECT_TRUE(messages->knows(10));
    host->say(10, "https://a.example/", "A");
    ASSERT_TRUE(waitUntil([&] { return messages->url(10, "A").has_value(); }));
    host.reset();
    EXPECT_TRUE(waitUntil([&] { return !messages->knows(10); }));
}

TEST_F(BrowserMessagesTest, AWorkerWaitsForATitleThatIsOnItsWayButNotForLong) {
    const auto messages = listen();
    const Host host(socket());
    host.say(10, "https://a.example/", "");
    ASSERT_TRUE(waitUntil([&] { return messages->knows(10); }));
    EXPECT_EQ(messages->url(10, "A"), std::nullopt) << "the main thread reads and can't wait";
    for (const auto& [title, expected] : {std::pair("A", std::optional<std::string>("https://a.example/")),
                                          std::pair("B", std::optional<std::string>())}) {
        std::atomic<bool> isDone = false;
        std::optional<std::string> found;
        const auto began = uptime();
        const std::jthread worker([&, window = std::string(title)] {
            found = messages->url(10, window);
            isDone = true;
        });
        if (expected) {
            EXPECT_TRUE(staysTrue([&] { return !isDone; }, 0.05s));
            host.say(10, "https://a.example/", "A");
        }
        ASSERT_TRUE(waitUntil([&] { return isDone.load(); }));
        EXPECT_EQ(found, expected);
        EXPECT_LT(uptime() - began, 1s);
    }
}

TEST_F(BrowserMessagesTest, ProfilesOfOneProcessKeepTheirPagesAndTheTitleChooses) {
    const auto messages = listen();
    const Host first(socket());
    auto second = std::make_unique<Host>(socket());
    const Host other(socket());
    const auto tells = [&](const Host& host, std::int64_t browser, const char* url, const char* title) {
        host.say(browser, url, title);
        return waitUntil([&] { return messages->url(browser, title) == url; });
    };
    ASSERT_TRUE(tells(first, 10, "https://news.example/", "News"));
    ASSERT_TRUE(tells(*second, 10, "https://today.example/", "News today"));
    ASSERT_TRUE(tells(other, 20, "https://other.example/", "Other"));
    EXPECT_EQ(messages->url(10, "News - Chromium"), "https://news.example/");
    EXPECT_EQ(messages->url(10, "News today - Chromium"), "https://today.example/") << "the longer title fits better";
    EXPECT_EQ(messages->url(0, "Other - Chromium"), "https://other.example/") << "of whatever process";
    ASSERT_TRUE(tells(*second, 10, "https://second.example/", "News")) << "the one that was told last";
    second.reset();
    EXPECT_TRUE(waitUntil([&] { return messages->url(10, "News") == "https://news.example/"; }));
}

TEST_F(BrowserMessagesTest, TheChannelSaysWhetherABrowserTellsItsPageAndWhyNoneDoes) {
    const Channel available{
        .question = "page in front", .name = "browser extension", .isAvailable = true, .gives = Sight::pages};
    const BrowserMessages messages(socket(), {});
    EXPECT_EQ(messages.channel().reason, "no browser with the extension has connected");
    EXPECT_THAT(messages.channel().remedy, HasSubstr("browser install"));
    auto host = std::make_unique<Host>(socket());
    host->say("garbage");
    EXPECT_TRUE(waitUntil([&] { return messages.channel().reason.ends_with("could not be understood"); }));
    host->say(10, "https://a.example/", "A");
    EXPECT_TRUE(waitUntil([&] { return messages.channel() == available; }));
    host.reset();
    EXPECT_TRUE(waitUntil([&] { return !messages.channel().isAvailable; }));
    EXPECT_EQ(BrowserMessages(std::nullopt, {}).channel().reason, "XDG_RUNTIME_DIR is not set");
}

TEST_F(BrowserMessagesTest, GarbageIsPassedOverAndNamedOnce) {
    const auto messages = listen();
    const Host host(socket());
    host.say(10, "https://a.example/", "A");
    ASSERT_TRUE(waitUntil([&] { return messages->knows(10); }));
    for (const std::string& garbage :
         {std::string("garbage"), std::string("{}"), std::string("\0\xff", 2), std::string(100'000, 'x'),
          BrowserMessage{.browser = 11, .page = {.url = "https://b.example/", .title = "B"}}.text()}) {
        ASSERT_TRUE(host.say(garbage));
        EXPECT_TRUE(staysTrue([&] { return messages->url(10, "A").has_value() && !messages->knows(11); }, 0.02s));
    }
    host.say(10, "https://c.example/", "C");
    EXPECT_TRUE(waitUntil([&] { return messages->url(10, "C").has_value(); }));
    EXPECT_THAT(lines_, ElementsAre("BrowserMessages: browser 10: a message could not be understood"));
}

TEST_F(BrowserMessagesTest, AFloodIsReadNowAndThenAndItsNewestMessageCounts) {
    const auto messages = listen();
    const Host host(socket());
    const auto end = uptime() + 1.5s;
    int number = 0;
    int reads = 0;
    std::string before;
    while (uptime() < end) {
        while (host.say(10, "https://a.example/" + std::to_string(number + 1), "A"))
            ++number;
        QCoreApplication::processEvents();
        const auto url = messages->url(10, "A").value_or("");
        if (url != before) ++reads;
        before = url;
    }
    EXPECT_GT(number, 1000);
    EXPECT_LE(reads, 250);
    const auto newest = "https://a.example/" + std::to_string(number);
    EXPECT_TRUE(waitUntil([&] { return messages->url(10, "A") == newest; }));
    EXPECT_THAT(lines_, ElementsAre("BrowserMessages: browser 10: there are too many messages, only the newest count"));
}

TEST_F(BrowserMessagesTest, SocketAndFolderBelongToTheUserAloneAndGoWithIt) {
    std::filesystem::create_directory(folder_ / "quorvane");
    std::filesystem::permissions(folder_ / "quorvane", std::filesystem::perms::all);
    auto messages = listen();
    EXPECT_EQ(permissions(folder_ / "quorvane"), 0700u);
    EXPECT_EQ(permissions(socket()), 0600u);
    if (::geteuid() == 0) {  // others can't send somebody else
        // Even with the doors open another user is not heard.
        for (const auto& path : {folder_.path(), folder_ / "quorvane", socket()})
            std::filesystem::permissions(path, std::filesystem::perms::all);
        OtherProcess stranger(
            [path = socket()] {
                const Host host(path);
                host.say(10, "https://a.example/", "A");
                return host.isConnected ? std::string("connected") : std::string("refused");
            },
            OtherProcess::As::nobody);
        ASSERT_TRUE(waitUntil([&] { return !lines_.empty(); }));
        EXPECT_EQ(stranger.wait(), "connected");
        EXPECT_TRUE(staysTrue([&] { return !messages->knows(10); }, 0.1s));
        EXPECT_THAT(lines_, ElementsAre("BrowserMessages: another user wanted to connect"));
    }
    messages.reset();
    EXPECT_FALSE(std::filesystem::exists(socket()));
}

TEST_F(BrowserMessagesTest, OnlyASocketWhereNobodyListensIsReplaced) {
    std::filesystem::create_directory(folder_ / "quorvane");
    { const BoundSocket left(socket(), SOCK_SEQPACKET, true); }  // its file stays
    ASSERT_TRUE(std::filesystem::exists(socket()));
    {
        const auto messages = listen();
        EXPECT_EQ(messages->problem(), "");
        const auto second = listen();
        EXPECT_THAT(second->problem(), HasSubstr("browsers already tell another tracker: quorvane (process"));
        EXPECT_EQ(second->url(10, "A"), std::nullopt);
        EXPECT_TRUE(Host(socket()).isConnected);
    }
    {
        const BoundSocket other(socket(), SOCK_SEQPACKET, true);
        EXPECT_THAT(listen()->problem(), HasSubstr("browser.sock: Address already in use"));
        EXPECT_TRUE(Host(socket()).isConnected) << "it stays where it is";
    }
    std::filesystem::remove(socket());
    writeFile(socket(), "mine");
    EXPECT_THAT(listen()->problem(), HasSubstr("Address already in use"));
    EXPECT_EQ(contentOf(socket()), "mine");
}

TEST_F(BrowserMessagesTest, WithoutAPlaceToListenThereAreNoAnswers) {
    const auto ignore = [](const std::string&) {};
    EXPECT_EQ(BrowserMessages(std::nullopt, ignore).problem(), "XDG_RUNTIME_DIR is not set");
    EXPECT_THAT(BrowserMessages(folder_ / std::string(120, 'x') / "browser.sock", ignore).problem(),
                HasSubstr("is too long for a socket"));
    writeFile(folder_ / "file", "");
    EXPECT_THAT(BrowserMessages(folder_ / "file/browser.sock", ignore).problem(), HasSubstr("cannot make"));
}

TEST_F(BrowserMessagesTest, BetweenMessagesTheProcessRests) {
    const auto messages = listen();
    const Host host(socket());
    host.say(10, "https://a.example/", "A");
    ASSERT_TRUE(waitUntil([&] { return messages->knows(10); }));
    (void)wakeUpsDuring(0.05s);
    EXPECT_LE(wakeUpsDuring(1.2s), 2) << "the end of the measurement is one";
}

}  // namespace
}  // namespace quorvane::platform
