#pragma once

#include "shell/billing/ArrangedWidget.h"

#include <vector>

namespace quorvane {

/// Cards of one width side by side; below 560, or more with a larger font, they stand one under another.
class CardRow : public ArrangedWidget {
public:
    enum class Between { nothing, chevrons };

    CardRow(const std::vector<QWidget*>& cards, Between between, QWidget* parent = nullptr);

protected:
    int arrange(int width, bool isTrial) const override;

private:
    int stack(int width, bool isTrial) const;

    std::vector<QWidget*> cards_;
    std::vector<QWidget*> chevrons_;  ///< one behind each card but the last, or none
};

}  // namespace quorvane
