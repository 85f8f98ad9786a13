#pragma once

#include "platform/Accessibility.h"

#include <optional>
#include <stop_token>
#include <string>
#include <string_view>

/// Chat applications call their window after themselves; what the user talks about stands inside it.
namespace quorvane::ChatTitleSearch {

/// Is this a chat application, whatever the case of its bundle id?
[[nodiscard]] bool isChatApplication(std::string_view bundleId);

/// Can the text be the title of a conversation? Its length counts in characters as people see them.
[[nodiscard]] bool isPlausible(std::string_view text, std::string_view bundleId);

/// The title of the conversation, as its element has it: around what has the focus, else in the window. Looks at 200
/// elements at most, for a second each, and ends early once `stop` is requested.
[[nodiscard]] std::optional<std::string> find(platform::Accessibility& accessibility,
                                              const platform::AccessibleElement& application,
                                              const platform::AccessibleElement& window, std::string_view bundleId,
                                              const std::stop_token& stop = {});

}  // namespace quorvane::ChatTitleSearch
