#pragma once

#include "platform/linux/accessibility/AtspiRound.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quorvane::platform {

/// The window in front as the desktop knows it, by which the accessibility tree is to find it.
struct FrontWindow {
    std::int64_t processIdentifier = 0;  ///< 0 where nobody tells
    std::string title;
    std::vector<std::string> names;  ///< that its application may call itself, in lower case
    friend bool operator==(const FrontWindow&, const FrontWindow&) = default;
};

namespace AtspiFrontWindow {

/// Does the window in front belong to this application? By its process; where that is not known, by its name.
[[nodiscard]] bool isOf(AtspiRound& round, const AtspiReference& application, const FrontWindow& front);

/// The only application on the bus to which it may belong: one that bears its name and shows a window with its title.
[[nodiscard]] std::optional<AtspiReference> application(AtspiRound& round, const FrontWindow& front);

/// The application's window with this title. Of several that are called so it is the active one; where none is called
/// so it is the active or the only one, as some toolkits leave the name out. None if it can't be told.
[[nodiscard]] std::optional<AtspiReference> window(AtspiRound& round, const AtspiReference& application,
                                                   const std::string& title);

}  // namespace AtspiFrontWindow
}  // namespace quorvane::platform
