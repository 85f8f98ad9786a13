#include "updates/UpdateAlert.h"

#include <gmock/gmock.h>

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
    const auto failed = [](const char* message) {
        return UpdateAlert{.title = "Updates could not be checked", .message = message};
    };
    const struct {
        UpdateState state;
        std::optional<UpdateAlert> expected;
    } rows[] = {
        {{.kind = Kind::idle, .wasAsked = true}, std::nullopt},
        {{.kind = Kind::checking, .wasAsked = true}, std::nullopt},
        {{.kind = Kind::upToDate}, std::nullopt},
        {{.kind = Kind::failed, .failure = UpdateFailure::untrusted}, std::nullopt},
        {{.kind = Kind::available, .update = update}, offer},
        {{.kind = Kind::available, .wasAsked = true, .update = update}, offer},
        {{.kind = Kind::upToDate, .wasAsked = true},
         UpdateAlert{.title = "Quorvane is up to date", .message = "1.2.0 is the newest version."}},
        {{.kind = Kind::noFeed, .wasAsked = true},
         UpdateAlert{.title = "Updates come with your system’s packages",
                     .message = "This build of Quorvane asks no server. Your system tells you when it has a newer "
                                "version."}},
        {{.kind = Kind::failed, .wasAsked = true, .failure = UpdateFailure::unreachable},
         failed("The update server could not be reached or does not work. Check the connection and try again later.")},
        {{.kind = Kind::failed, .wasAsked = true, .failure = UpdateFailure::insecure},
         failed("There is no secure connection to the update server. Check the date of this computer and the network "
                "that it is in.")},
        {{.kind = Kind::failed, .wasAsked = true, .failure = UpdateFailure::untrusted},
         failed("What the update server sent is not signed by the makers of Quorvane, so nothing of it is offered. "
                "Try again later.")},
        {{.kind = Kind::failed, .wasAsked = true, .failure = UpdateFailure::unreadable},
         failed("What the update server sent cannot be read. Try again later.")},
    };
    const Localization english("en");
    for (const auto& row : rows)
        EXPECT_EQ(updateAlert(row.state, {.shortVersion = "1.2.0"}, english), row.expected);
}

}  // namespace
}  // namespace quorvane
