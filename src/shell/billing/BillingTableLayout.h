#pragma once

#include "shell/billing/BillingTableModel.h"

#include <array>

namespace quorvane {

/// The columns of the billing table in a width. What has no column of its own stands as a second line in another one:
/// the client under its project, review hours under the hours, the rate under the amount.
struct BillingTableLayout {
    static constexpr int headHeight = 36;
    static constexpr int rowHeight = 44;
    static constexpr int padding = 16;  ///< before the first column and behind the last, part of their widths

    std::array<int, billingColumns> widths{};  ///< 0 for a column that isn't there

    [[nodiscard]] bool has(BillingColumn column) const { return widths[static_cast<std::size_t>(column)] > 0; }
};

[[nodiscard]] BillingTableLayout billingTableLayout(int width);

}  // namespace quorvane
