#include "base/Json.h"
#include "cli/CliFixture.h"

namespace quorvane {
namespace {

namespace fs = std::filesystem;

/// The command on a desktop without a bus, with programs of GNOME that the test makes up: the settings are files.
class DesktopCommandTest : public CliTest {
protected:
    DesktopCommandTest() {
        fs::create_directories(folder_ / "bin");
        program("gsettings", R"(file="$HOME/$3"; [ "$1" = get ] && cat "$file" || echo "$4" >"$file")");
        setShell("43.9");
        setList("['one@example.com', \"it's\"]");
        writeFile(folder_ / "disabled-extensions", "@as []\n");
        setting_.environment["PATH"] = (folder_ / "bin").string() + ":/usr/bin:/bin";
        setting_.environment["XDG_CURRENT_DESKTOP"] = "ubuntu:GNOME";
        setting_.environment["XDG_DATA_DIRS"] = (folder_ / "system").string();
    }

    void program(const std::string& name, const std::string& code) {
        writeFile(folder_ / "bin" / name, "#!/bin/sh\n" + code + "\n");
        fs::permissions(folder_ / "bin" / name, fs::perms::owner_all);
    }
    void setShell(const std::string& version) { program("gnome-shell", "echo GNOME Shell " + version); }
    void setList(const std::string& list) { writeFile(enabled_, list + "\n"); }

    std::string state() {
        const auto status = parseJson(outputOf({"desktop", "status", "--json"})).value();
        return status.at("aids").at(0).at("state").get<std::string>();
    }
    std::string form() {
        return contentOf(extension_ / "extension.js").find("export default") != std::string::npos ? "45" : "42";
    }

    const fs::path enabled_ = folder_ / "enabled-extensions";
    const fs::path below_ = "gnome-shell/extensions/focus@quorvane.com";
    const fs::path extension_ = folder_ / ".local/share" / below_;
};

TEST_F(DesktopCommandTest, TheFormThatFitsTheShellIsInstalledTurnedOnAndTakenBack) {
    EXPECT_EQ(state(), "not_installed");
    EXPECT_THAT(outputOf({"desktop", "install"}), AllOf(HasSubstr("log out and in again"), HasSubstr(extension_)));
    EXPECT_EQ(state(), "after_login");
    EXPECT_EQ(form(), "42");
    EXPECT_EQ(contentOf(enabled_), "['one@example.com', \"it's\", 'focus@quorvane.com']\n");
    EXPECT_THAT(outputOf({"desktop", "install"}), HasSubstr("installed and turned on"));
    EXPECT_EQ(contentOf(enabled_), "['one@example.com', \"it's\", 'focus@quorvane.com']\n") << "once is enough";

    writeFile(folder_ / "disabled-extensions", "['focus@quorvane.com']\n");
    EXPECT_EQ(state(), "off");
    setShell("48.4");
    EXPECT_THAT(outputOf({"desktop", "install"}), HasSubstr("installed and turned on"));
    EXPECT_EQ(state(), "after_login");
    EXPECT_EQ(form(), "45") << "an update of the desktop wants another one";
    writeFile(extension_ / "extension.js", "// of an older Quorvane");
    EXPECT_THAT(outputOf({"desktop", "status"}), HasSubstr("renews it"));

    EXPECT_THAT(outputOf({"desktop", "remove"}), HasSubstr("not installed any more"));
    EXPECT_FALSE(fs::exists(extension_));
    EXPECT_EQ(contentOf(enabled_), "['one@example.com', \"it's\"]\n");
    EXPECT_EQ(contentOf(folder_ / "disabled-extensions"), "@as []\n");
}

TEST_F(DesktopCommandTest, WhatAllUsersHaveIsTurnedOnWithoutACopy) {
    fs::create_directories(folder_ / "system" / below_);
    writeFile(folder_ / "system" / below_ / "metadata.json", "{}");
    setList("@as []");
    EXPECT_EQ(state(), "off");
    EXPECT_THAT(outputOf({"desktop", "install"}), HasSubstr("installed and turned on"));
    EXPECT_EQ(state(), "after_login");
    EXPECT_EQ(contentOf(enabled_), "['focus@quorvane.com']\n");
    EXPECT_FALSE(fs::exists(extension_));
    EXPECT_THAT(outputOf({"desktop", "remove"}), HasSubstr("stays installed"));
    EXPECT_EQ(contentOf(enabled_), "@as []\n");
}

TEST_F(DesktopCommandTest, WhatCannotBeDoneIsSaid) {
    setShell("41.2");
    expectRefusal({"desktop", "install"}, 1, "GNOME Shell 42 to 49, and this is 41.2");
    EXPECT_FALSE(fs::exists(extension_));
    setShell("43.9");
    setList("a fault");
    expectRefusal({"desktop", "install"}, 1, "enabled-extensions is no list");
    EXPECT_EQ(contentOf(enabled_), "a fault\n");
    program("gsettings", "echo No such schema >&2; exit 1");
    expectRefusal({"desktop", "status"}, 1, "gsettings: No such schema");
    setting_.environment["XDG_CURRENT_DESKTOP"] = "sway";
    EXPECT_THAT(outputOf({"desktop", "install"}), HasSubstr("nothing to install: this desktop has no use"));
    EXPECT_EQ(parseJson(outputOf({"desktop", "status", "--json"})), Json({{"aids", Json::array()}}));
    setting_.environment["XDG_SESSION_TYPE"] = "x11";
    EXPECT_THAT(outputOf({"desktop", "remove"}), HasSubstr("nothing to remove: X11 tells"));
}

}  // namespace
}  // namespace quorvane
