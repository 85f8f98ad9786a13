#include "billing/BillingFilters.h"

#include "store/StoredNames.h"

namespace quorvane {

std::string clientLabel(std::string_view clientFilter, const Localization& localization) {
    if (clientFilter == BillingClientFilter::all) return localization.text("all_clients");
    if (clientFilter == BillingClientFilter::none) return localization.text("not_set");
    return std::string(clientFilter);
}

std::string categoryLabel(std::string_view categoryFilter, const Localization& localization) {
    if (categoryFilter == BillingCategoryFilter::all) return localization.text("all_categories");
    if (categoryFilter == BillingCategoryFilter::none) return localization.text("no_category");
    return StoredNames::shownCategory(categoryFilter, localization);
}

}  // namespace quorvane
