#include "desktop/support/BusService.h"
#include "desktop/support/DesktopSession.h"
#include "desktop/support/LogindMock.h"
#include "desktop/support/TestWindow.h"
#include "desktop/support/Waiting.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "platform/linux/session/LinuxDesktop.h"
#include "support/Matching.h"

#include <fmt/format.h>
#include <unistd.h>

namespace quorvane::platform {
namespace {

TEST(PresenceTest, WhoHoldsIdlenessOffOrPlaysInFrontSpeaksForSomebodyAndWhoHangsDoesNotHoldUp) {
    QtRunLoop runLoop;
    const DesktopSession session;
    LinuxDesktop desktop(runLoop);
    const auto presence = [&] { return desktop.presence().quietPresence().value_or(""); };
    // Whoever is asked may be late on a busy machine, and is passed over then.
    const auto found = [&](std::string_view end) { return waitUntil([&] { return presence().ends_with(end); }); };
    EXPECT_EQ(presence(), "");

    LogindMock logind;
    const auto mine = fmt::format("{}, 7", getuid());
    const std::pair<std::string, const char*> rows[] = {
        {"('sleep:idle', 'Player', 'Film', 'block', " + mine + ")", "logind: Player holds idleness off"},
        {"('idle', 'Player', 'Film', 'delay', " + mine + ")", ""},
        {"('sleep', 'Player', 'Film', 'block', " + mine + ")", ""},
        {fmt::format("('idle', 'Backup', 'Nightly', 'block', {}, 7)", getuid() + 1), ""},
    };
    for (const auto& [inhibitors, expected] : rows) {
        logind.listInhibitors(inhibitors);
        EXPECT_TRUE(*expected == '\0' ? presence().empty() : found(expected)) << inhibitors;
    }
    {
        BusMock manager("org.gnome.SessionManager");
        manager.setAnswer("IsInhibited", "u", "b", "ret = args[0] == 8");
        EXPECT_TRUE(found("org.gnome.SessionManager holds idleness off"));
        manager.setAnswer("IsInhibited", "u", "b", "ret = False");
        EXPECT_EQ(presence(), "");
    }
    constexpr const char* player = "{{'org.mpris.MediaPlayer2': {{'DesktopEntry': 'film'}},"
                                   " 'org.mpris.MediaPlayer2.Player': {{'PlaybackStatus': '{}'}}}}";
    const char* const path = "/org/mpris/MediaPlayer2";
    const char* const name = "org.mpris.MediaPlayer2.film";
    {
        const BusService paused(name, path, fmt::format(player, "Paused"), "Film");
        ASSERT_TRUE(waitUntil([&] { return desktop.foreground().frontmostWindowTitle() == "Film"; }));
        EXPECT_EQ(presence(), "");
    }
    BusService playing(name, path, fmt::format(player, "Playing"), "Film");
    EXPECT_TRUE(found(" plays"));
    TestWindow other({.instance = "other", .wmClass = "Other", .title = "Other"});
    ASSERT_TRUE(waitUntil([&] { return other.hasFocus(); }));
    EXPECT_EQ(presence(), "") << "not in front";
    other.destroy();
    EXPECT_TRUE(found(" plays"));

    playing.hang();
    logind.hang();
    const auto before = uptime();
    EXPECT_EQ(presence(), "");
    EXPECT_THAT((uptime() - before).count(), Lt(1));
}

}  // namespace
}  // namespace quorvane::platform
