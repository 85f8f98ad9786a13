#include "base/Json.h"
#include "cli/CliFixture.h"

#include <fmt/format.h>

namespace quorvane {
namespace {

namespace fs = std::filesystem;

/// The command beside the host and the extension that were built with it.
class BrowserCommandTest : public CliTest {
protected:
    static constexpr const char* below = "NativeMessagingHosts/org.zelkor.quorvane.json";
    const fs::path host_ = fs::path(QUORVANE_CLI).parent_path() / "quorvane-browser-host";
    const fs::path chromium_ = folder_ / ".config/chromium" / below;
    const fs::path brave_ = folder_ / ".config/BraveSoftware/Brave-Browser" / below;
    const fs::path firefox_ = folder_ / ".mozilla/native-messaging-hosts/org.zelkor.quorvane.json";

    /// "chromium: right" for each that is not missing.
    std::vector<std::string> states() {
        std::vector<std::string> found;
        const auto status = parseJson(outputOf({"browser", "status", "--json"})).value();
        for (const Json& row : status.at("browsers"))
            if (row.at("state") != "missing")
                found.push_back(
                    fmt::format("{}: {}", row.at("browser").get<std::string>(), row.at("state").get<std::string>()));
        return found;
    }
};

TEST_F(BrowserCommandTest, TellsTheBrowsersThatAreThereWhereTheHostIsAndTakesItBack) {
    fs::create_directories(folder_ / ".config/chromium");
    fs::create_directories(folder_ / ".config/mozilla");  // the newer place
    const auto said = outputOf({"browser", "install"});
    EXPECT_THAT(said, AllOf(HasSubstr("chromium: " + chromium_.string()), HasSubstr("firefox: " + firefox_.string()),
                            HasSubstr("chrome://extensions"), HasSubstr("share/quorvane/browser-extension"),
                            HasSubstr("tabs@quorvane.zelkor.xpi"), Not(HasSubstr("brave"))));
    const auto manifest = [&](const char* key, const char* value) {
        return Json{{"name", "org.zelkor.quorvane"},
                    {"description", "Tells Quorvane which page is in front"},
                    {"path", host_.string()},
                    {"type", "stdio"},
                    {key, Json::array({value})}};
    };
    EXPECT_EQ(parseJson(contentOf(chromium_)),
              manifest("allowed_origins", "chrome-extension://oinjoldeagfjhhmclcibbolnhbhomjpe/"));
    EXPECT_EQ(parseJson(contentOf(firefox_)), manifest("allowed_extensions", "tabs@quorvane.zelkor"));
    EXPECT_THAT(states(), ElementsAre("chromium: right", "firefox: right"));
    EXPECT_FALSE(fs::exists(brave_));

    EXPECT_THAT(outputOf({"browser", "remove"}), HasSubstr(chromium_.string() + " is gone"));
    EXPECT_THAT(states(), IsEmpty());
    EXPECT_TRUE(fs::exists(folder_ / ".config/chromium"));
    EXPECT_EQ(outputOf({"browser", "remove"}), "") << "what is not there needs no removing";
}

TEST_F(BrowserCommandTest, WritesNothingWithoutABrowserUnlessAskedForAll) {
    expectRefusal({"browser", "install"}, 1, "--all");
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_THAT(outputOf({"browser", "install", "--all"}), HasSubstr("brave: " + brave_.string()));
    EXPECT_EQ(states().size(), 21);
}

TEST_F(BrowserCommandTest, ChannelsAndRelativesHaveManifestsAndSandboxesAreToldThatTheyCantTakePart) {
    const std::pair<const char*, const char*> rows[] = {
        {".config/google-chrome-beta", ".config/google-chrome-beta/NativeMessagingHosts"},
        {".config/BraveSoftware/Brave-Browser-Nightly",
         ".config/BraveSoftware/Brave-Browser-Nightly/NativeMessagingHosts"},
        {".librewolf", ".librewolf/native-messaging-hosts"},
        {".config/zen", ".zen/native-messaging-hosts"},
        {".floorp", ".mozilla/native-messaging-hosts"},  // where it looks beside its own
    };
    for (const auto& [folder, manifests] : rows) {
        fs::create_directories(folder_ / folder);
        EXPECT_THAT(outputOf({"browser", "install"}), HasSubstr(manifests));
    }
    fs::create_directories(folder_ / ".var/app/org.mozilla.firefox");
    fs::create_directories(folder_ / "snap/chromium");
    for (const char* command : {"install", "status"})
        EXPECT_THAT(outputOf({"browser", command}), AllOf(HasSubstr("org.mozilla.firefox (Flatpak): shut off"),
                                                          HasSubstr("chromium (Snap): shut off")));
    EXPECT_THAT(outputOf({"browser", "install"}), HasSubstr("toolkit-accessibility true"));
}

TEST_F(BrowserCommandTest, SaysWhatIsWrongAndMendsIt) {
    // Another place, damaged, empty.
    const char* const contents[] = {R"({"name":"org.zelkor.quorvane","path":"/gone","type":"stdio"})",
                                    R"({"name":"org.zel)", ""};
    fs::create_directories(chromium_.parent_path());
    for (const char* content : contents) {
        SCOPED_TRACE(content);
        writeFile(chromium_, content);
        EXPECT_THAT(states(), ElementsAre("chromium: wrong"));
        EXPECT_THAT(outputOf({"browser", "status"}), HasSubstr("leads elsewhere or is damaged"));
        EXPECT_THAT(outputOf({"browser", "install"}), HasSubstr("chromium: "));
        EXPECT_THAT(states(), ElementsAre("chromium: right"));
    }
    writeFile(chromium_, R"({"name":"org.example.other"})");
    EXPECT_EQ(outputOf({"browser", "remove"}), "") << "what somebody else put there stays";
    EXPECT_TRUE(fs::exists(chromium_));
}

TEST_F(BrowserCommandTest, StatusTriesTheHost) {
    const auto built = parseJson(outputOf({"browser", "status", "--json"})).value();
    EXPECT_EQ(built.at("host"), (Json{{"file", host_.string()}, {"runs", true}, {"problem", nullptr}}));
    EXPECT_TRUE(fs::exists(fs::path(built.at("extension").get<std::string>()) / "manifest.json"));

    // The same programs as an installation has them, with a host that fails and then without any.
    const fs::path bin = folder_ / "usr/bin";
    const fs::path libexec = folder_ / "usr/libexec/quorvane";
    fs::create_directories(bin);
    fs::create_directories(libexec);
    fs::copy_file(QUORVANE_CLI, bin / "quorvane-cli");
    fs::copy_file("/bin/false", libexec / "quorvane-browser-host");
    const auto status = [&] { return ProgramRun(bin / "quorvane-cli", {"browser", "status"}, setting_).wait().out; };
    EXPECT_THAT(status(), HasSubstr("usr/libexec/quorvane/quorvane-browser-host can't run: it ended with status 1"));
    fs::permissions(libexec / "quorvane-browser-host", fs::perms::owner_read);
    EXPECT_THAT(status(), HasSubstr("can't run: Permission denied"));
    fs::remove(libexec / "quorvane-browser-host");
    EXPECT_THAT(status(), AllOf(HasSubstr("can't run: it is not installed"),
                                HasSubstr("extension              it is not installed")));
    EXPECT_THAT(ProgramRun(bin / "quorvane-cli", {"browser", "install", "--all"}, setting_).wait(),
                isRefused(1, HasSubstr("quorvane-browser-host is not installed")));
}

TEST_F(BrowserCommandTest, TheIdIsTheOneThatChromiumDerivesFromTheExtensionsKey) {
    const auto status = parseJson(outputOf({"browser", "status", "--json"})).value();
    const fs::path extension = status.at("extension").get<std::string>();
    const auto manifest = parseJson(contentOf(extension / "manifest.json")).value();
    const auto derive = fmt::format("printf %s '{}' | base64 -d | sha256sum | head -c32 | tr 0-9a-f a-p",
                                    manifest.at("key").get<std::string>());
    EXPECT_EQ(ProgramRun("/bin/sh", {"-c", derive}, setting_).wait().out, status.at("extension_id"));
    EXPECT_EQ(manifest.at("browser_specific_settings").at("gecko").at("id"), "tabs@quorvane.zelkor");
    EXPECT_EQ(manifest.at("incognito"), "not_allowed");
}

}  // namespace
}  // namespace quorvane
