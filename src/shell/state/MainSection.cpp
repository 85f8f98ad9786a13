#include "shell/state/MainSection.h"

namespace quorvane {

std::string title(MainSection section, const Localization& localization) {
    switch (section) {
    case MainSection::activity: return localization.text("nav_timeline");
    case MainSection::billing: return localization.text("nav_billing");
    case MainSection::rules: return localization.text("nav_rules");
    case MainSection::exporting: return localization.text("nav_export");
    }
    return {};
}

const char* iconName(MainSection section) {
    switch (section) {
    case MainSection::activity: return "timeline";
    case MainSection::billing: return "billing";
    case MainSection::rules: return "rules";
    case MainSection::exporting: return "export";
    }
    return "";
}

}  // namespace quorvane
