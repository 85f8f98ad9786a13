#pragma once

#include "base/Uuid.h"
#include "l10n/Localization.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

/// Values of a client filter that are no client's name.
namespace BillingClientFilter {
inline constexpr std::string_view all = "__all_clients__";
inline constexpr std::string_view none = "__no_client__";
}  // namespace BillingClientFilter

/// Values of a category filter that are no category's name.
namespace BillingCategoryFilter {
inline constexpr std::string_view all = "__all_categories__";
inline constexpr std::string_view none = "__no_category__";
}  // namespace BillingCategoryFilter

/// What a report looks at beside its range.
struct BillingFilters {
    std::optional<Uuid> projectId;  ///< none: all projects
    std::string client = std::string(BillingClientFilter::all);
    std::string category = std::string(BillingCategoryFilter::all);
    friend bool operator==(const BillingFilters&, const BillingFilters&) = default;
};

/// How documents call the filter.
[[nodiscard]] std::string clientLabel(std::string_view clientFilter, const Localization& localization);
[[nodiscard]] std::string categoryLabel(std::string_view categoryFilter, const Localization& localization);

}  // namespace quorvane
