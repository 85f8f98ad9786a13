#include "updates/ZelkorUpdateController.h"

#include "platform/simulated/InMemoryUserDefaults.h"
#include "platform/simulated/SimulatedHttpClient.h"
#include "support/LoggingTest.h"
#include "updates/SignedFeed.h"
#include "updates/ZelkorUpdateCommands.h"

#include <algorithm>
#include <cstdlib>
#include <fmt/format.h>
#include <functional>

namespace quorvane {

// NOLINTNEXTLINE(readability-identifier-naming): the name that the test library looks for
void PrintTo(const UpdateState& state, std::ostream* out) {
    *out << "kind " << static_cast<int>(state.kind) << (state.wasAsked ? ", asked" : "");
    if (state.update) *out << ", " << describe(state.update->version) << ' ' << state.update->notes;
    if (state.failure) *out << ", failure " << static_cast<int>(*state.failure);
}

namespace {

using Kind = UpdateState::Kind;
using platform::HttpFailure;
using platform::HttpResponse;

const std::string host = "updates.example.org";
const std::string feedURL =
    "https://updates.example.org/api/v1/public/app-updates/appcast.xml?app_id=quorvane&platform=linux&channel=stable";
const std::string signatureURL = "https://updates.example.org/api/v1/public/app-updates/appcast.xml.sig?app_id=quorvane"
                                 "&platform=linux&channel=stable";
const AvailableUpdate newVersion{.version = {"1.3", "9"}, .link = "https://example.org/get", .notes = "Faster\nCalmer"};

class ZelkorUpdateControllerTest : public LoggingTest {
protected:
    static HttpResponse ok(const std::string& body) { return {.status = 200, .body = body}; }
    void publish(const std::string& feed) { publish(feed, signatureOf(feed)); }
    void publish(const std::string& feed, const std::string& signature) {
        network.answers[feedURL] = ok(feed);
        network.answers[signatureURL] = ok(signature);
    }

    /// The application as it is after a start: what it kept is in the defaults.
    std::unique_ptr<ZelkorUpdateController> makeController(const std::string& feedHost = host) {
        return std::make_unique<ZelkorUpdateController>(
            ZelkorUpdateController::Parts{.runLoop = loop,
                                          .defaults = defaults,
                                          .logger = logger,
                                          .application = {.shortVersion = "1.2.0", .build = "5"},
                                          .feedHost = feedHost,
                                          .publicKey = testPublicKey(),
                                          .makeHttpClient = [this]() -> std::unique_ptr<platform::HttpClient> {
                                              ++clients;
                                              return std::make_unique<platform::SimulatedHttpClient>(loop, network);
                                          }});
    }

    void check(ZelkorUpdateController& controller) {
        controller.checkForUpdates();
        loop.playFor(1s);
    }

    /// How often the feed itself was asked for.
    [[nodiscard]] std::ptrdiff_t checks() const {
        return std::ranges::count(network.requests, feedURL, &platform::HttpRequest::url);
    }

    platform::InMemoryUserDefaults defaults;
    platform::SimulatedHttpClient::Network network;
    int clients = 0;
};

TEST_F(ZelkorUpdateControllerTest, LooksAfterTheLaunchAndOffersWhatIsNewer) {
    publish(feedOf(feedItem("1.1", "4") + feedItem("1.3", "9") + feedItem("1.2.0", "5")));
    const auto controller = makeController();
    std::vector<UpdateState> states;
    const auto subscription = controller->changed.subscribe([&] { states.push_back(controller->state()); });
    controller->startIfNeeded();
    controller->startIfNeeded();
    loop.playFor(20s);
    EXPECT_THAT(states, ElementsAre(UpdateState{.kind = Kind::checking},
                                    UpdateState{.kind = Kind::available, .update = newVersion}));
    using Redirects = platform::HttpRequest::Redirects;
    EXPECT_EQ(network.requests,
              (std::vector<platform::HttpRequest>{
                  {.url = feedURL, .maximumBytes = 1'048'576, .timeout = 30s, .redirects = Redirects::sameOrigin},
                  {.url = signatureURL, .maximumBytes = 1'024, .timeout = 30s, .redirects = Redirects::sameOrigin}}));
    EXPECT_EQ(clients, 1);
    EXPECT_THAT(console.lines(), IsEmpty());
}

TEST_F(ZelkorUpdateControllerTest, AsksOnceADayHoweverOftenItIsStartedAndHoweverItWent) {
    for (int start = 0; start < 10; ++start) {
        const auto controller = makeController();
        controller->startIfNeeded();
        loop.playFor(600s);
    }
    EXPECT_EQ(checks(), 1);
    publish(feedOf(feedItem("1.2.0", "5")));
    defaults.refuseWrites();
    const auto controller = makeController();
    controller->startIfNeeded();
    loop.playFor(72h);
    EXPECT_EQ(checks(), 4);
    EXPECT_EQ(controller->state(), (UpdateState{.kind = Kind::upToDate}));

    loop.setClock(at("2020-01-01 00:00:00"));
    loop.playFor(2h);
    EXPECT_EQ(checks(), 5) << "years would pass until the clock is there again";
}

TEST_F(ZelkorUpdateControllerTest, WithoutAFeedThereIsNoClientNoTimerAndTheMenuSaysWhereUpdatesComeFrom) {
    const auto controller = makeController("");
    const Localization english("en");
    ZelkorUpdateCommands commands(*controller, english);
    controller->startIfNeeded();
    EXPECT_EQ(loop.pendingTimers(), 0);
    EXPECT_EQ(commands.text(), "Updates come with your system’s packages");
    EXPECT_FALSE(commands.isEnabled());
    int changes = 0;
    const auto subscription = controller->changed.subscribe([&] { ++changes; });
    commands.perform();
    commands.perform();
    EXPECT_EQ(controller->state(), (UpdateState{.kind = Kind::noFeed, .wasAsked = true}));
    EXPECT_EQ(changes, 2) << "who asks twice is answered twice";
    loop.playFor(48h);
    EXPECT_EQ(clients, 0);
    EXPECT_THAT(defaults.values(), IsEmpty());
}

TEST_F(ZelkorUpdateControllerTest, UnderATestHostNothingHappens) {
    publish(feedOf(feedItem("1.3", "9")));
    setenv("XCTestConfigurationFilePath", "", 1);
    const auto controller = makeController();
    controller->startIfNeeded();
    controller->checkForUpdates();
    loop.playFor(48h);
    unsetenv("XCTestConfigurationFilePath");
    EXPECT_EQ(controller->state(), UpdateState{});
    EXPECT_EQ(clients, 0);
}

TEST_F(ZelkorUpdateControllerTest, TheUserGetsAnAnswerEachTimeAlsoOfACheckThatRunsAlready) {
    publish(feedOf(feedItem("1.2", "5")));
    const auto controller = makeController();
    const Localization english("en");
    ZelkorUpdateCommands commands(*controller, english);
    EXPECT_EQ(commands.text(), "Check for Updates…");
    controller->startIfNeeded();
    loop.playFor(ZelkorUpdateController::launchDelay);
    EXPECT_EQ(controller->state(), (UpdateState{.kind = Kind::checking}));
    EXPECT_FALSE(commands.isEnabled());
    controller->checkForUpdates();
    EXPECT_EQ(controller->state(), (UpdateState{.kind = Kind::checking, .wasAsked = true}));
    loop.playFor(1s);
    EXPECT_EQ(controller->state(), (UpdateState{.kind = Kind::upToDate, .wasAsked = true}));
    EXPECT_TRUE(commands.isEnabled());
    controller->dismiss();
    EXPECT_EQ(controller->state(), UpdateState{});
    commands.perform();
    loop.playFor(1s);
    EXPECT_EQ(controller->state(), (UpdateState{.kind = Kind::upToDate, .wasAsked = true}));
    EXPECT_EQ(checks(), 2);
}

TEST_F(ZelkorUpdateControllerTest, ASkippedVersionIsOfferedOnRequestAloneAndItsSuccessorByItself) {
    publish(feedOf(feedItem("1.3", "9")));
    auto controller = makeController();
    check(*controller);
    controller->skipVersion();
    EXPECT_EQ(controller->state(), UpdateState{});

    controller = makeController();
    controller->startIfNeeded();
    loop.playFor(25h);
    EXPECT_EQ(checks(), 2);
    EXPECT_EQ(controller->state(), UpdateState{});
    check(*controller);
    EXPECT_EQ(controller->state(), (UpdateState{.kind = Kind::available, .wasAsked = true, .update = newVersion}));
    controller->dismiss();

    publish(feedOf(feedItem("1.3", "10")));
    loop.playFor(25h);
    EXPECT_EQ(controller->state().kind, Kind::available);
    loop.playFor(48h);
    EXPECT_EQ(checks(), 4) << "it is on offer until the user answers";
}

TEST_F(ZelkorUpdateControllerTest, GoingAwayInTheMiddleOfACheckEndsIt) {
    publish(feedOf(feedItem("1.3", "9")));
    auto controller = makeController();
    controller->checkForUpdates();
    loop.playFor(0.15s);
    EXPECT_THAT(network.requests, SizeIs(2));
    controller.reset();
    EXPECT_EQ(loop.pendingTimers(), 0);
    loop.playFor(60s);
}

TEST_F(ZelkorUpdateControllerTest, AHostileServerIsRefusedWithOneLineAndAClearAnswer) {
    using enum UpdateFailure;
    const std::string good = feedOf(feedItem("1.3", "9"));
    const auto expectFailure = [&](const std::function<void()>& arrange, UpdateFailure failure,
                                   const std::string& cause) {
        SCOPED_TRACE(cause);
        network = {};
        console.clear();
        arrange();
        const auto controller = makeController();
        controller->checkForUpdates();
        loop.playFor(31s);
        EXPECT_EQ(controller->state(), (UpdateState{.kind = Kind::failed, .wasAsked = true, .failure = failure}));
        EXPECT_THAT(console.lines(),
                    ElementsAre(EndsWith("] [WARNING] [Updates] The update feed updates.example.org/api/"
                                         "v1/public/app-updates/appcast.xml was refused: " +
                                         cause)));
    };
    expectFailure([] {}, unreachable, "the feed: no such host");
    expectFailure([&] { network.silent = {feedURL}; }, unreachable, "the feed: there was no whole answer");
    const std::tuple<std::string, platform::HttpResult, UpdateFailure, const char*> answers[] = {
        {feedURL, HttpResponse{.status = 404}, unreachable, "the feed: the server answered with status 404"},
        {feedURL, HttpFailure{HttpFailure::Kind::insecure, "wrong name"}, insecure, "the feed: wrong name"},
        {feedURL, HttpFailure{HttpFailure::Kind::refused, "redirected"}, untrusted, "the feed: redirected"},
        {feedURL, ok(std::string(1'048'577, ' ')), unreadable, "the feed: the answer is too large"},
        {signatureURL, HttpResponse{.status = 404}, untrusted, "the signature: the server answered with status 404"},
        {signatureURL, HttpFailure{.cause = "reset"}, unreachable, "the signature: reset"},
        {signatureURL, ok(std::string(1'025, 'A')), unreadable, "the signature: the answer is too large"},
        {signatureURL, ok("<html></html>"), untrusted, "its signature is wrong"},
    };
    for (const auto& [url, answer, failure, cause] : answers) {
        const auto arrange = [&, &given = answer, &where = url] {
            publish(good);
            network.answers[where] = given;
        };
        expectFailure(arrange, failure, cause);
    }
    // Another key; signed before it was changed; no feed at all.
    expectFailure([&] { publish(good, signatureOf(good, 2)); }, untrusted, "its signature is wrong");
    expectFailure([&] { publish(good + " ", signatureOf(good)); }, untrusted, "its signature is wrong");
    expectFailure([&] { publish("<!DOCTYPE html>", "none"); }, untrusted, "its signature is wrong");
    const std::string noAddress = "its version 1.3 (9) has no https address to get it from";
    const std::pair<std::string, std::string> feeds[] = {
        {"<!DOCTYPE rss [<!ENTITY a \"b\">]>" + good, "it declares a document type"},
        {good.substr(0, 200), "it is no XML: Error parsing start element tag at byte 199"},
        {feedOf(""), "it has no item with a version"},
        {feedOf(feedItem("1.3", "9", "http://example.org/get")), noAddress},
        {feedOf(feedItem("1.3", "9", "javascript:alert(1)")), noAddress},
    };
    for (const auto& [feed, cause] : feeds)
        expectFailure([&, &signedFeed = feed] { publish(signedFeed); }, unreadable, cause);
}

TEST_F(ZelkorUpdateControllerTest, AFeedThatGoesBackOffersNothingAndIsReported) {
    publish(feedOf(feedItem("1.1", "99") + feedItem("1.2", "4")));
    const auto controller = makeController();
    check(*controller);
    EXPECT_EQ(controller->state(), (UpdateState{.kind = Kind::upToDate, .wasAsked = true}));
    EXPECT_THAT(console.lines(), ElementsAre(EndsWith("was refused: its newest version, 1.2 (4), is older "
                                                      "than the running one")));
}

}  // namespace
}  // namespace quorvane
