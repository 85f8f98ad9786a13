#pragma once

#include <string>
#include <vector>

namespace quorvane {

/// A library that the application is built with.
struct Licence {
    std::string name;
    std::string licence;    ///< by its identifier of SPDX: "LGPL-3.0-only OR GPL-2.0-only"
    std::string copyright;  ///< years and holders
    friend bool operator==(const Licence&, const Licence&) = default;
};

/// All of them in the order of their names, from resources/licences.json.
[[nodiscard]] std::vector<Licence> licences();

}  // namespace quorvane
