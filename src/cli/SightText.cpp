#include "cli/SightText.h"

namespace quorvane::cli {

const char* nameOf(platform::Sight sight) {
    switch (sight) {
    case platform::Sight::nothing: return "nothing";
    case platform::Sight::applications: return "applications";
    case platform::Sight::titles: return "titles";
    case platform::Sight::documents: return "documents";
    case platform::Sight::pages: return "pages";
    }
    return "";
}

std::string sightInWords(const CaptureHealth& health) {
    const std::string which = health.isPartial ? "some " : "";
    switch (health.sight) {
    case platform::Sight::nothing: return "nothing";
    case platform::Sight::applications: return which + "applications";
    case platform::Sight::titles: return which + "applications and titles";
    case platform::Sight::documents: return which + "applications, titles and documents";
    case platform::Sight::pages: return which + "applications, titles, documents and web pages";
    }
    return {};
}

}  // namespace quorvane::cli
