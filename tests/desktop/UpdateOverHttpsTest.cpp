#include "desktop/support/Waiting.h"
#include "desktop/support/WebServer.h"
#include "platform/linux/QtHttpClient.h"
#include "platform/linux/QtRunLoop.h"
#include "platform/simulated/InMemoryUserDefaults.h"
#include "platform/simulated/RecordingSystemLog.h"
#include "support/Matching.h"
#include "support/RecordingConsole.h"
#include "updates/SignedFeed.h"
#include "updates/ZelkorUpdateController.h"

namespace quorvane {
namespace {

TEST(UpdateOverHttpsTest, OffersWhatARealServerPublishesAndRefusesItOnceTheSignatureIsGone) {
    const WebServer server;
    platform::QtRunLoop loop;
    platform::InMemoryUserDefaults defaults;
    platform::RecordingSystemLog systemLog;
    RecordingConsole console;
    AppLogger logger(loop, systemLog, console, {});
    ZelkorUpdateController controller(
        {.runLoop = loop,
         .defaults = defaults,
         .logger = logger,
         .application = {.shortVersion = "1.2.0", .build = "5"},
         .feedHost = "localhost:" + server.port(),
         .publicKey = testPublicKey(),
         .makeHttpClient = [&] { return std::make_unique<platform::QtHttpClient>("Quorvane", server.authority()); }});
    const auto outcome = [&] {
        controller.checkForUpdates();
        EXPECT_TRUE(waitUntil([&] { return controller.state().kind != UpdateState::Kind::checking; }));
        return controller.state();
    };

    const auto feed = feedOf(feedItem("1.3", "9"));
    server.publish("appcast.xml", feed);
    server.publish("appcast.xml.sig", signatureOf(feed) + "\n");
    const auto offered = outcome();
    ASSERT_EQ(offered.kind, UpdateState::Kind::available);
    EXPECT_EQ(offered.update->version, (ReleaseVersion{"1.3", "9"}));
    EXPECT_THAT(console.lines(), IsEmpty());

    server.publish("appcast.xml.sig", "");
    EXPECT_EQ(outcome().failure, UpdateFailure::untrusted);
    EXPECT_THAT(console.lines(), ElementsAre(EndsWith("was refused: its signature is wrong")));
}

}  // namespace
}  // namespace quorvane
