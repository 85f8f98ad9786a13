#include "shell/chart/AppIcon.h"

#include "shell/look/Typography.h"
#include "timeline/HoverIcon.h"

namespace quorvane {

QIcon appIcon(const ProcessedActivityItem& item, const platform::ApplicationIcons& icons) {
    if (const auto name = hoverIconName(item.bundleId, item.appName))
        if (QIcon icon = QIcon::fromTheme(qt(std::string(*name))); !icon.isNull()) return icon;
    if (!item.bundleId) return {};
    const QString name = qt(icons.icon(*item.bundleId).value_or(*item.bundleId));
    return name.startsWith(QLatin1Char('/')) ? QIcon(name) : QIcon::fromTheme(name);
}

}  // namespace quorvane
