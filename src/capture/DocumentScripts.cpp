#include "capture/DocumentScripts.h"

#include "base/Text.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace quorvane::DocumentScripts {
namespace {

using enum Family;

constexpr bool lowercased = true;
constexpr auto table = std::to_array<Row>({
    {"Pages", "com.apple.iwork.pages", frontDocumentPath, lowercased},
    {"Numbers", "com.apple.iwork.numbers", frontDocumentPath, lowercased},
    {"Keynote", "com.apple.iwork.keynote", frontDocumentPath, lowercased},
    {"TextEdit", "com.apple.TextEdit", frontDocumentPath, lowercased},
    {"Preview", "com.apple.Preview", frontDocumentPath, lowercased},
    {"Visual Studio Code", "com.microsoft.vscode", frontDocumentPath},
    {"IntelliJ IDEA", "com.jetbrains.intellij", frontDocumentPath},
    {"PyCharm", "com.jetbrains.pycharm", frontDocumentPath},
    {"WebStorm", "com.jetbrains.webstorm", frontDocumentPath},
    {"GoLand", "com.jetbrains.goland", frontDocumentPath},
    {"CLion", "com.jetbrains.clion", frontDocumentPath},
    {"Sublime Text", "com.sublimetext.4", frontDocumentPath},
    {"BBEdit", "com.barebones.bbedit", frontDocumentPath},
    {"TextMate", "com.macromates.textmate", frontDocumentPath},
    {"Adobe Photoshop 2024", "com.adobe.photoshop", frontDocumentPath},
    {"Adobe Illustrator 2024", "com.adobe.illustrator", frontDocumentPath},
    {"Adobe InDesign 2024", "com.adobe.indesign", frontDocumentPath},
    {"Sketch", "com.bohemiancoding.sketch3", frontDocumentPath},
    {"Figma", "com.figma.desktop", frontDocumentPath},
    {"Final Cut Pro", "com.apple.finalcutpro", frontDocumentPath},
    {"DaVinci Resolve", "com.blackmagic-design.resolve", frontDocumentPath},
    {"QuickTime Player", "com.apple.quicktimeplayerx", frontDocumentPath},
    {"VLC", "com.videolan.vlc", frontDocumentPath},
    {"Books", "com.apple.books", frontDocumentPath},
    {"Grapher", "com.apple.utilities.grapher", frontDocumentPath},
    {"Terminal", "com.apple.utilities.terminal", frontDocumentPath},
    {"VMware Fusion", "com.apple.utilities.vmwarefusion", frontDocumentPath},
    {"Postman", "com.postmanlabs.mac", frontDocumentPath},
    {"Insomnia", "com.insomnia.app", frontDocumentPath},
    {"TablePlus", "com.tinyapp.tableplus", frontDocumentPath},
    {"Sequel Ace", "com.sequel-ace.sequel-ace", frontDocumentPath},
    {"DBeaver", "org.jkiss.dbeaver.core.product", frontDocumentPath},
    {"Zeplin", "io.zeplin.osx", frontDocumentPath},
    {"iTerm", "com.googlecode.iterm2", frontDocumentPath},
    {"Hyper", "co.zeit.hyper", frontDocumentPath},
    {"Fork", "com.danpristupov.fork", frontDocumentPath},
    {"SourceTree", "com.torusknot.sourcetreenotmas", frontDocumentPath},
    {"GitHub Desktop", "com.github.githubclient", frontDocumentPath},
    {"Reminders", "com.apple.reminders", frontDocumentName},
    {"Calendar", "com.apple.calendar", frontDocumentName},
    {"Messages", "com.apple.messages", frontDocumentName},
    {"FaceTime", "com.apple.facetime", frontDocumentName},
    {"Photo Booth", "com.apple.photobooth", frontDocumentName},
    {"Image Capture", "com.apple.imagecapture", frontDocumentName},
    {"Dictionary", "com.apple.dictionary", frontDocumentName},
    {"Calculator", "com.apple.calculator", frontDocumentName},
    {"Chess", "com.apple.chess", frontDocumentName},
    {"Dashboard", "com.apple.dashboard", frontDocumentName},
    {"Dock", "com.apple.dock", frontDocumentName},
    {"System Preferences", "com.apple.systempreferences", frontDocumentName},
    {"Activity Monitor", "com.apple.utilities.activitymonitor", frontDocumentName},
    {"Airport Utility", "com.apple.utilities.airportutility", frontDocumentName},
    {"Audio MIDI Setup", "com.apple.utilities.audiomidi", frontDocumentName},
    {"Bluetooth File Exchange", "com.apple.utilities.bluetoothfileexchange", frontDocumentName},
    {"ColorSync Utility", "com.apple.utilities.colorSync", frontDocumentName},
    {"Console", "com.apple.utilities.console", frontDocumentName},
    {"Digital Color Meter", "com.apple.utilities.digitalcolormeter", frontDocumentName},
    {"Disk Utility", "com.apple.utilities.diskutility", frontDocumentName},
    {"Keychain Access", "com.apple.utilities.keychainaccess", frontDocumentName},
    {"Migration Assistant", "com.apple.utilities.migrationassistant", frontDocumentName},
    {"Network Utility", "com.apple.utilities.networkutility", frontDocumentName},
    {"System Information", "com.apple.utilities.systeminformation", frontDocumentName},
    {"Wireless Diagnostics", "com.apple.utilities.wirelessdiagnostics", frontDocumentName},
    {"WeChat", "com.tencent.xinwechat", frontDocumentName},
    {"QQ", "com.tencent.qq", frontDocumentName},
    {"DingTalk", "com.alibaba.dingtalkmac", frontDocumentName},
    {"Lark", "com.bytedance.lark", frontDocumentName},
    {"Slack", "com.tinyspeck.slackmacgap", frontDocumentName},
    {"Discord", "com.hnc.discord", frontDocumentName},
    {"Telegram", "ru.keepcoder.telegram", frontDocumentName},
    {"WhatsApp", "net.whatsapp.whatsapp", frontDocumentName},
    {"Zoom", "us.zoom.xos", frontDocumentName},
    {"Microsoft Teams", "com.microsoft.teams", frontDocumentName},
    {"Skype", "com.skype.skype", frontDocumentName},
    {"Signal", "org.whispersystems.signal-desktop", frontDocumentName},
    {"Docker Desktop", "com.docker.docker", frontDocumentName},
    {"Spotify", "com.spotify.client", currentTrack},
    {"Music", "com.apple.music", currentTrack},
    {"TV", "com.apple.tv", currentTrack},
    {"Microsoft Word", "com.microsoft.word", word},
    {"Microsoft Excel", "com.microsoft.excel", excel},
    {"Microsoft PowerPoint", "com.microsoft.powerpoint", powerPoint},
    {"Xcode", "com.apple.dt.xcode", xcode},
    {"Finder", "com.apple.finder", finder},
    {"Mail", "com.apple.mail", mail},
    {"Notes", "com.apple.notes", notes},
    {"Stickies", "com.apple.stickies", stickies},
});

/// `name of front document`, or a fixed text. `check` stands before it, with its line end.
std::string nameOfFrontDocument(std::string_view name, std::string_view check, std::string_view otherwise) {
    return fmt::format("tell application \"{}\"\n{}    try\n        return name of front document\n"
                       "    on error\n        return \"{}\"\n    end try\nend tell",
                       name, check, otherwise);
}

constexpr std::string_view nothingWithoutDocuments = "    if (count of documents) = 0 then return \"\"\n";

std::string pathOfFrontDocument(std::string_view name) {
    return fmt::format("tell application \"{}\"\n    if (count of documents) = 0 then return \"\"\n    try\n"
                       "        set p to POSIX path of (path of front document)\n        return p\n"
                       "    on error\n        return name of front document\n    end try\nend tell",
                       name);
}

std::string pathOfOfficeDocument(std::string_view name, std::string_view documents, std::string_view active) {
    return fmt::format("tell application \"{0}\"\n    if (count of {1}) = 0 then return \"\"\n    try\n"
                       "        set p to (full name of {2})\n        try\n            return POSIX path of p\n"
                       "        on error\n            return p as string\n        end try\n"
                       "    on error\n        return name of {2}\n    end try\nend tell",
                       name, documents, active);
}

constexpr const char* xcodeSource =
    "tell application \"Xcode\"\n    try\n        if it is not running then return \"\"\n"
    "        if (count of documents) = 0 then return \"\"\n        set doc to front document\n        try\n"
    "            set p to POSIX path of (path of doc)\n            return p\n        on error\n            try\n"
    "                return name of doc\n            on error\n                return \"Xcode Document\"\n"
    "            end try\n        end try\n    on error\n        return \"\"\n    end try\nend tell";

platform::ScriptFamily question(Family family) {
    switch (family) {
    case frontDocumentPath: return platform::ScriptFamily::frontDocumentPath;
    case frontDocumentName:
    case mail:
    case notes:
    case stickies: return platform::ScriptFamily::frontDocumentName;
    case currentTrack: return platform::ScriptFamily::currentTrack;
    case word:
    case excel:
    case powerPoint: return platform::ScriptFamily::officeDocument;
    case xcode: return platform::ScriptFamily::developmentDocument;
    case finder: return platform::ScriptFamily::frontFolder;
    }
    return platform::ScriptFamily::frontDocumentName;
}

}  // namespace

std::span<const Row> rows() {
    return table;
}

const Row* row(std::string_view bundleId) {
    const std::string sought = text::lowercased(bundleId);
    const auto found = std::find_if(table.begin(), table.end(), [&](const Row& row) {
        return row.isComparedLowercased ? text::lowercased(row.bundleId) == sought : row.bundleId == sought;
    });
    return found == table.end() ? nullptr : &*found;
}

std::optional<std::string> errorText(const Row& row) {
    switch (row.family) {
    case frontDocumentName: return std::string(row.applicationName);
    case currentTrack: return "Unknown Track";
    case xcode: return "";
    case finder: return "Desktop";
    case mail: return "Mail";
    case notes: return "Untitled Note";
    case stickies: return "Sticky Note";
    case frontDocumentPath:
    case word:
    case excel:
    case powerPoint: return std::nullopt;
    }
    return std::nullopt;
}

std::string source(const Row& row) {
    const std::string_view name = row.applicationName;
    const std::string otherwise = errorText(row).value_or("");
    switch (row.family) {
    case frontDocumentPath: return pathOfFrontDocument(name);
    case frontDocumentName: return nameOfFrontDocument(name, "", otherwise);
    case currentTrack:
        return fmt::format("tell application \"{}\"\n    try\n        return name of current track\n"
                           "    on error\n        return \"{}\"\n    end try\nend tell",
                           name, otherwise);
    case word: return pathOfOfficeDocument(name, "documents", "active document");
    case excel: return pathOfOfficeDocument(name, "workbooks", "active workbook");
    case powerPoint: return pathOfOfficeDocument(name, "presentations", "active presentation");
    case xcode: return xcodeSource;
    case finder:
        return fmt::format("tell application \"{}\"\n    try\n        set p to POSIX path of (target of front window)\n"
                           "        return p\n    on error\n        return \"{}\"\n    end try\nend tell",
                           name, otherwise);
    case mail:
    case notes:
    case stickies: return nameOfFrontDocument(name, nothingWithoutDocuments, otherwise);
    }
    return {};
}

platform::Script script(const Row& row, const std::string& bundleId) {
    return {.family = question(row.family),
            .applicationName = std::string(row.applicationName),
            .bundleIdentifier = bundleId,
            .source = source(row)};
}

}  // namespace quorvane::DocumentScripts
