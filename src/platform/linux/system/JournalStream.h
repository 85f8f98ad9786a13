#pragma once

namespace quorvane::platform {

/// Does the system's journal keep what is written to the descriptor? That is so for the output of a service, and of
/// programs that many desktops start.
[[nodiscard]] bool leadsToJournal(int descriptor);

}  // namespace quorvane::platform
