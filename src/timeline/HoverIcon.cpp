#include "timeline/HoverIcon.h"

#include "base/Text.h"

#include <algorithm>
#include <array>

namespace quorvane {
namespace {

struct Icon {
    std::string_view key;  ///< lower case
    std::string_view name;
};

constexpr std::array<Icon, 14> icons{{{"com.apple.finder", "finder_icon"},
                                      {"com.apple.mail", "mail_icon"},
                                      {"com.apple.notes", "notes_icon"},
                                      {"com.apple.reminders", "reminders_icon"},
                                      {"com.apple.ical", "calendar_icon"},
                                      {"com.apple.safari", "safari_icon"},
                                      {"excel", "excel_icon"},
                                      {"numbers", "numbers_icon"},
                                      {"pages", "pages_icon"},
                                      {"wechat", "wechat_icon"},
                                      {"chrome", "chrome_icon"},
                                      {"safari", "safari_icon"},
                                      {"edge", "edge_icon"},
                                      {"xcode", "xcode_icon"}}};

}  // namespace

std::optional<std::string_view> hoverIconName(const std::optional<std::string>& bundleId,
                                              const std::optional<std::string>& appName) {
    const auto* found = std::ranges::find(icons, text::lowercased(bundleId.value_or("")), &Icon::key);
    if (found == icons.end()) {
        const std::string name = text::lowercased(appName.value_or(""));
        found = std::ranges::find_if(icons, [&](const Icon& icon) { return name.find(icon.key) != std::string::npos; });
    }
    return found == icons.end() ? std::nullopt : std::optional(found->name);
}

}  // namespace quorvane
