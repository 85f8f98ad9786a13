#include "updates/UpdateAlert.h"

#include "support/Matching.h"

namespace quorvane {

// NOLINTNEXTLINE(readability-identifier-naming): the name that the test library looks for
void PrintTo(const UpdateAlert& alert, std::ostream* out) {
    *out << alert.title << " / " << alert.message << " / " << alert.notes << " / " << alert.link;
}

namespace {

using Kind = UpdateState::Kind;

TEST(UpdateAlertTest, EveryOutcomeThatSomebodyAskedForIsToldAndElseOnlyAnUpdate) {
    const AvailableUpdate update{.version = {"1.3", "9"}, .link = "https://example.org/get", .notes = "Faster"};
    const UpdateAlert offer{.title = "Quorvane 1.3 is available",
                            .message = "You have 1.2.0. The download opens in your browser.",
                            .notes = "Faster",
                            .link = "https://example.org/get",
                            .downloadButton = "Download",
                            .laterButton = "Later",
                            .skipButton = "Skip This Version"};
    const Localization english("en");
    const auto alert = [&](const UpdateState& state) { return updateAlert(state, {.shortVersion = "1.2.0"}, english); };
    EXPECT_EQ(alert({.kind = Kind::idle, .wasAsked = true}), std::nullopt);
    EXPECT_EQ(alert({.kind = Kind::checking, .wasAsked = true}), std::nullopt);
    EXPECT_EQ(alert({.kind = Kind::upToDate}), std::nullopt);
    EXPECT_EQ(alert({.kind = Kind::failed, .failure = UpdateFailure::untrusted}), std::nullopt);
    EXPECT_EQ(alert({.kind = Kind::available, .update = update}), offer);
    EXPECT_EQ(alert({.kind = Kind::available, .wasAsked = true, .update = update}), offer);
    EXPECT_EQ(alert({.kind = Kind::upToDate, .wasAsked = true}),
              (UpdateAlert{.title = "Quorvane is up to date", .message = "1.2.0 is the newest version."}));
    EXPECT_EQ(alert({.kind = Kind::noFeed, .wasAsked = true}).value().title,
              "Updates come with your system’s packages");
    const std::pair<UpdateFailure, const char*> failures[] = {
        {UpdateFailure::unreachable, "The update server could not be reached or does not work."},
        {UpdateFailure::insecure, "There is no secure connection to the update server."},
        {UpdateFailure::untrusted, "What the update server sent is not signed by the makers of Quorvane"},
        {UpdateFailure::unreadable, "What the update server sent cannot be read."},
    };
    for (const auto& [failure, beginning] : failures) {
        const auto told = alert({.kind = Kind::failed, .wasAsked = true, .failure = failure}).value();
        EXPECT_EQ(told.title, "Updates could not be checked");
        EXPECT_THAT(told.message, StartsWith(beginning));
    }
}

}  // namespace
}  // namespace quorvane
