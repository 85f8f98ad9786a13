#include "shell/state/Licences.h"

#include "base/Json.h"

namespace quorvane {

extern const char* const licencesJson;  // made from resources/licences.json

std::vector<Licence> licences() {
    const auto parsed = parseJson(licencesJson);
    std::vector<Licence> found;
    for (const auto& library : parsed.value_or(Json::array()))
        found.push_back({.name = library.value("name", ""),
                         .licence = library.value("licence", ""),
                         .copyright = library.value("copyright", "")});
    return found;
}

}  // namespace quorvane
