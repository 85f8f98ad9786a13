#pragma once

#include "platform/linux/accessibility/AtspiRound.h"

#include <optional>
#include <string>

/// The document or page that a window shows, and where it lies. Of a window that may be one of private browsing nothing
/// is told.
namespace quorvane::platform::AtspiDocuments {

/// The URL of the page that a window shows, or of a page that its window shows. Of hidden tabs none.
[[nodiscard]] std::optional<std::string> pageUrl(AtspiRound& round, const AtspiReference& windowOrPage);

/// The URL of the document that a window shows, pages included.
[[nodiscard]] std::optional<std::string> documentUrl(AtspiRound& round, const AtspiReference& window);

}  // namespace quorvane::platform::AtspiDocuments
