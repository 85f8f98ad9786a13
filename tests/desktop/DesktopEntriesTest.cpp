#include "desktop/support/ChildProcess.h"
#include "desktop/support/Environment.h"
#include "desktop/support/Waiting.h"
#include "platform/linux/desktop/ApplicationIdentity.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "support/Matching.h"
#include "support/TemporaryFolder.h"

#include <unistd.h>

namespace quorvane::platform {
namespace {

TEST(DesktopEntryTest, AFileIsReadAsItsFormatSays) {
    const auto entry = parseDesktopEntry("# a comment\n"
                                         "[Desktop Entry]\r\n"
                                         "Type = Application\n"
                                         "Name=Text\\sEditor\n"
                                         "Name[de]=Textbearbeitung\n"
                                         "Name[de_AT]=Textbearbeitung (AT)\n"
                                         "Exec=env LANG=C \"/opt/my editor/edit\" --new %F\n"
                                         "StartupWMClass=Edit\n"
                                         "NoDisplay=true\n"
                                         "[Desktop Action new]\n"
                                         "Name=New Window\n"
                                         "Exec=other\n",
                                         {"de_CH", "de"});
    EXPECT_EQ(entry,
              (DesktopEntry{.name = "Textbearbeitung", .startupWmClass = "Edit", .program = "edit", .isShown = false}));
}

TEST(DesktopEntryTest, WhatDescribesNoApplicationIsNone) {
    for (const char* text :
         {"", "Type=Application\nName=No group\n", "[Desktop Entry]\nType=Link\nName=Link\nURL=https://example.org\n",
          "[Desktop Entry]\nType=Application\nName=Removed\nHidden=true\n"})
        EXPECT_EQ(parseDesktopEntry(text, {}), std::nullopt) << text;
}

TEST(DesktopEntryTest, TheLanguageIsThatOfMessages) {
    const std::tuple<const char*, std::map<std::string, std::string>, std::vector<std::string>> rows[] = {
        {"all before messages",
         {{"LC_ALL", "fr_FR.UTF-8"}, {"LC_MESSAGES", "de_DE"}, {"LANG", "it_IT"}},
         {"fr_FR", "fr"}},
        {"messages before language", {{"LC_MESSAGES", "zh_TW"}, {"LANG", "it_IT"}}, {"zh_TW", "zh"}},
        {"modifier", {{"LANG", "sr_RS.UTF-8@latin"}}, {"sr_RS@latin", "sr_RS", "sr@latin", "sr"}},
        {"none", {{"LC_ALL", "C.UTF-8"}, {"LANG", "de_DE"}}, {}},
        {"nothing set", {}, {}},
    };
    for (const auto& [what, variables, expected] : rows) {
        Environment environment;
        for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"})
            environment.unset(name);
        for (const auto& [name, value] : variables)
            environment.set(name, value);
        EXPECT_EQ(desktopEntryLocales(), expected) << what;
    }
}

/// Two data directories, of which the first is the more important.
class DesktopEntriesTest : public testing::Test {
protected:
    void install(const std::string& file, const std::string& keys, const char* directory = "system") {
        const auto path = folder / directory / "applications" / (file + ".desktop");
        std::filesystem::create_directories(path.parent_path());
        writeFile(path, "[Desktop Entry]\nType=Application\n" + keys);
    }
    std::string idOf(const WindowProperties& window) {
        const auto entry = entries.find(window);
        return entry ? entry->id : "none";
    }

    QtRunLoop runLoop;
    TemporaryFolder folder;
    DesktopEntries entries{{folder / "user", folder / "system"}};
};

TEST_F(DesktopEntriesTest, AWindowFindsItsApplicationByTheSurestSign) {
    for (const char* name : {"libreoffice-writer", "mpv", "chromium"})
        install(name, std::string("Name=") + name + "\nStartupWMClass=" + name + "\n");
    install("org.gnome.gedit", "Name=Text Editor\nExec=gedit\n");
    install("kde/org.kde.kate", "Name=Kate\n");
    install("geany", "Name=Geany\n");
    install("hidden-twin", "Name=Twin\nStartupWMClass=Twin\nNoDisplay=true\n");
    install("twin-shown", "Name=Twin\nStartupWMClass=Twin\n");
    const std::tuple<const char*, WindowProperties, const char*> rows[] = {
        {"desktop file of KDE", {.wmClass = "mpv", .kdeDesktopFile = "geany", .gtkApplicationId = "mpv"}, "geany"},
        {"desktop file as path", {.kdeDesktopFile = "/usr/share/applications/geany.desktop"}, "geany"},
        {"id of GTK", {.instance = "x", .wmClass = "mpv", .gtkApplicationId = "org.gnome.gedit"}, "org.gnome.gedit"},
        {"id of GTK without file", {.instance = "x", .wmClass = "mpv", .gtkApplicationId = "org.xfce.mpv"}, "mpv"},
        {"class", {.instance = "libreoffice", .wmClass = "libreoffice-writer"}, "libreoffice-writer"},
        {"class before instance", {.instance = "mpv", .wmClass = "libreoffice-writer"}, "libreoffice-writer"},
        {"class in other case", {.instance = "chromium (/home/me/p)", .wmClass = "Chromium"}, "chromium"},
        {"class is the id", {.instance = "other", .wmClass = "Geany"}, "geany"},
        {"instance is the id", {.instance = "geany", .wmClass = "Other"}, "geany"},
        {"last part of an id", {.instance = "gedit", .wmClass = "Gedit"}, "org.gnome.gedit"},
        {"in a subdirectory", {.instance = "kate", .wmClass = "kate"}, "kde-org.kde.kate"},
        {"shown in menus first", {.instance = "x", .wmClass = "Twin"}, "twin-shown"},
        {"unknown", {.instance = "nobody", .wmClass = "Nobody"}, "none"},
        {"nothing", {}, "none"},
    };
    for (const auto& [name, window, expected] : rows)
        EXPECT_EQ(idOf(window), expected) << name;
}

TEST_F(DesktopEntriesTest, AnImportantDirectoryHidesAndRemovesWhatIsBelow) {
    install("editor", "Name=System\n");
    install("editor", "Name=Mine\n", "user");
    install("viewer", "Name=Viewer\n");
    install("viewer", "Name=Viewer\nHidden=true\n", "user");
    const auto editor = entries.find({.wmClass = "editor"});
    ASSERT_TRUE(editor);
    EXPECT_EQ(editor->name, "Mine");
    EXPECT_EQ(idOf({.wmClass = "viewer"}), "none");
}

TEST_F(DesktopEntriesTest, WhatIsInstalledAndRemovedLaterCounts) {
    const auto knows = [&](const char* name) { return entries.find({.wmClass = name}).has_value(); };
    std::filesystem::create_directories(folder / "user");
    install("early", "Name=Early\n");
    ASSERT_TRUE(knows("early"));
    install("late", "Name=Late\n");
    EXPECT_TRUE(waitUntil([&] { return knows("late"); }));
    install("below/late", "Name=Later\nStartupWMClass=Below\n");
    EXPECT_TRUE(waitUntil([&] { return knows("Below"); }));
    install("mine", "Name=Mine\n", "user");
    EXPECT_TRUE(waitUntil([&] { return knows("mine"); })) << "its directory has only now been made";
    std::filesystem::remove(folder / "system/applications/early.desktop");
    EXPECT_TRUE(waitUntil([&] { return !knows("early"); }));
}

TEST_F(DesktopEntriesTest, AProcessIsRecognisedByItsLauncherOrItsProgram) {
    install("sleeper", "Name=Sleeper\nExec=/bin/sleep %U\n");
    install("launched", "Name=Launched\nExec=wrapper\n");
    const ChildProcess plain({"sleep", "60"});
    const ChildProcess launched({"sh", "-c",
                                 "GIO_LAUNCHED_DESKTOP_FILE=/usr/share/applications/launched.desktop "
                                 "GIO_LAUNCHED_DESKTOP_FILE_PID=$$ exec sleep 60"});
    const ChildProcess childOfLaunched({"env", "GIO_LAUNCHED_DESKTOP_FILE=/usr/share/applications/launched.desktop",
                                        "GIO_LAUNCHED_DESKTOP_FILE_PID=1", "sleep", "60"});
    const auto becomes = [&](const ChildProcess& process, const char* id) {
        return waitUntil([&] { return idOf({.wmClass = "x", .pid = process.pid()}) == id; });
    };
    EXPECT_TRUE(becomes(plain, "sleeper"));
    EXPECT_TRUE(becomes(launched, "launched"));
    EXPECT_TRUE(becomes(childOfLaunched, "sleeper"));
    install("sleeper-two", "Name=Another with the same program\nExec=sleep\n");
    EXPECT_TRUE(becomes(plain, "none")) << "a program that two applications share says nothing";
}

TEST_F(DesktopEntriesTest, TheIconIsFoundByTheIdentifierThatARecordHas) {
    install("google-chrome", "Name=Chrome\nIcon=google-chrome\n");
    install("chrome-app", "Name=Page\nIcon=page\nStartupWMClass=crx_abc\n");
    install("firefox_firefox", "Name=Firefox\nIcon=/snap/firefox/default256.png\n");
    install("com.visualstudio.code", "Name=Code\nIcon=com.visualstudio.code\n");
    install("jetbrains-idea-4f1c", "Name=IntelliJ\nIcon=idea\nStartupWMClass=jetbrains-idea\n");
    install("org.example.Notes", "Name=Notes\nIcon=notes\n");
    install("code-url-handler", "Name=Code\nIcon=handler\nNoDisplay=true\n");
    install("plain", "Name=Plain\n");
    const ApplicationIdentity identity(entries, IdentityTable::builtIn());
    const std::pair<const char*, const char*> rows[] = {{"com.google.Chrome", "google-chrome"},
                                                        {"org.mozilla.firefox", "/snap/firefox/default256.png"},
                                                        {"com.microsoft.vscode", "com.visualstudio.code"},
                                                        {"com.jetbrains.intellij", "idea"},
                                                        {"org.example.Notes", "notes"},
                                                        {"plain", "none"},
                                                        {"com.apple.Safari", "none"}};
    for (const auto& [bundleIdentifier, icon] : rows)
        EXPECT_EQ(identity.icon(bundleIdentifier).value_or("none"), icon) << bundleIdentifier;
}

TEST_F(DesktopEntriesTest, AnApplicationIsNamedByTableFileOrClass) {
    install("google-chrome", "Name=Google Chrome\n");
    install("org.example.Notes", "Name=Notes\n");
    install("jetbrains-idea-4f1c", "Name=IntelliJ\nStartupWMClass=jetbrains-idea\n");
    install("appimagekit_1-Krita", "Name=Krita\nStartupWMClass=krita\n");
    install("my-code", "Name=Mine\nExec=/opt/code/code\n");
    install("chrome-abc-Default", "Name=Mail\nStartupWMClass=crx_abc\n");
    ApplicationIdentity identity(entries, IdentityTable::builtIn());
    const std::tuple<const char*, WindowProperties, ForegroundApplication> rows[] = {
        {"in the table", {.wmClass = "Google-chrome"}, {"com.google.Chrome", "Google Chrome"}},
        {"in no table", {.wmClass = "Notes"}, {"org.example.Notes", "Notes"}},
        {"id of an installer", {.wmClass = "jetbrains-idea"}, {"com.jetbrains.intellij", "IntelliJ"}},
        {"known for its documents", {.wmClass = "krita"}, {"krita", "Krita"}},
        {"own class", {.wmClass = "Code", .kdeDesktopFile = "my-code"}, {"com.microsoft.vscode", "Mine"}},
        {"page as application",
         {.instance = "crx_abc", .wmClass = "Google-chrome", .kdeDesktopFile = "chrome-abc-Default"},
         {"chrome-abc-Default", "Mail"}},
        {"instance in the table", {.instance = "code", .wmClass = "Wrapper"}, {"com.microsoft.vscode", "Wrapper"}},
        {"class in the table", {.wmClass = "Firefox-esr"}, {"org.mozilla.firefox", "Firefox-esr"}},
        {"class alone", {.wmClass = "MyTool"}, {"mytool", "MyTool"}},
        {"instance alone", {.instance = "tool"}, {"tool", "tool"}},
        {"process alone", {.pid = getpid()}, {std::nullopt, "quorvane_linux_test"}},
        {"nothing", {}, {}},
    };
    for (const auto& [name, window, expected] : rows)
        EXPECT_EQ(identity.identify(window), expected) << name;
}

}  // namespace
}  // namespace quorvane::platform
