#include "shell/billing/BillingTableLayout.h"

#include <algorithm>
#include <numeric>

namespace quorvane {
namespace {

constexpr int foldedBelow = 758;  // 760 with the card's edges
constexpr int narrowBelow = 558;
constexpr double clientShare = 0.19;

}  // namespace

BillingTableLayout billingTableLayout(int width) {
    const int inner = std::max(width - 2 * BillingTableLayout::padding, 0);
    BillingTableLayout layout{.widths = {0, qRound(inner * clientShare), 92, 92, 112, 120}};
    auto& [project, client, hours, reviewHours, hourlyRate, amount] = layout.widths;
    if (width < foldedBelow) client = 0;
    if (width < narrowBelow) {
        reviewHours = 0;
        hourlyRate = 0;
    }
    project = std::max(inner - std::accumulate(layout.widths.begin(), layout.widths.end(), 0), 0);
    project += BillingTableLayout::padding;
    amount += BillingTableLayout::padding;
    return layout;
}

}  // namespace quorvane
