#include "platform/linux/desktop/XdgLoginItem.h"

#include "base/AtomicFile.h"
#include "base/Text.h"
#include "platform/linux/desktop/DesktopFileText.h"
#include "platform/linux/system/WholeFile.h"
#include "platform/linux/system/XdgPaths.h"

#include <fmt/format.h>
#include <utility>

namespace quorvane::platform {
namespace {

constexpr const char* entry = R"([Desktop Entry]
Type=Application
Version=1.4
Name=Quorvane
Comment=Records by itself which application has your attention
Exec={} --background
TryExec={}
Icon=org.zelkor.Quorvane
Terminal=false
NoDisplay=true
X-GNOME-Autostart-enabled=true
)";

/// Does a line of the entry's first group say so?
bool says(std::string_view text, std::string_view key, std::string_view value) {
    bool isInEntry = false;
    for (const auto& raw : text::split(text, '\n')) {
        const auto line = text::trimmed(raw);
        if (line.starts_with('[')) isInEntry = line == "[Desktop Entry]";
        const auto equals = line.find('=');
        if (!isInEntry || equals == std::string::npos) continue;
        if (text::trimmed(line.substr(0, equals)) == key && text::trimmed(line.substr(equals + 1)) == value)
            return true;
    }
    return false;
}

}  // namespace

XdgLoginItem::XdgLoginItem(std::filesystem::path program)
    : program_(std::move(program)), file_(XdgPaths::configHome() / "autostart" / "org.zelkor.Quorvane.desktop") {}

bool XdgLoginItem::isEnabled() const {
    const auto text = wholeFile(file_);
    return text && !says(*text, "Hidden", "true") && !says(*text, "X-GNOME-Autostart-enabled", "false");
}

std::optional<std::string> XdgLoginItem::registerItem() {
    const auto folder = file_.parent_path();
    if (!XdgPaths::createPrivately(folder)) return fmt::format("the folder {} can't be made", folder.string());
    try {
        writeFileAtomically(file_,
                            fmt::format(entry, desktopArgument(program_.string()), desktopValue(program_.string())));
    } catch (const FileError& error) {
        return error.what();
    }
    return std::nullopt;
}

std::optional<std::string> XdgLoginItem::unregisterItem() {
    std::error_code error;
    std::filesystem::remove(file_, error);
    if (error) return fmt::format("{} can't be removed: {}", file_.string(), error.message());
    return std::nullopt;
}

}  // namespace quorvane::platform
