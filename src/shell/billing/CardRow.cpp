#include "shell/billing/CardRow.h"

#include "shell/look/IconView.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <algorithm>

namespace quorvane {
namespace {

constexpr int stackedBelow = 560;
constexpr int stackGap = 12;
constexpr int chevronGap = 24;
constexpr int chevronSize = 14;

}  // namespace

CardRow::CardRow(const std::vector<QWidget*>& cards, Between between, QWidget* parent)
    : ArrangedWidget(parent), cards_(cards) {
    for (QWidget* const card : cards_) {
        card->setParent(this);
        if (between == Between::chevrons && card != cards_.back())
            chevrons_.push_back(new IconView(QStringLiteral("right"), chevronSize, &Theme::text2, this));
    }
}

int CardRow::arrange(int width, bool isTrial) const {
    if (width < stackedBelow * typeScale()) return stack(width, isTrial);
    const int count = static_cast<int>(cards_.size());
    const int gap = chevrons_.empty() ? Metrics::cardGap : chevronGap;
    int height = 0;
    for (const QWidget* const card : cards_)
        height = std::max(height, card->sizeHint().height());
    if (isTrial) return height;
    const double cardWidth = (width - (count - 1) * gap) / static_cast<double>(count);
    for (int i = 0; i < count; ++i) {
        const int left = qRound(i * (cardWidth + gap));
        const int right = qRound(i * (cardWidth + gap) + cardWidth);
        put(*cards_[static_cast<std::size_t>(i)], width, {left, 0, right - left, height});
        if (i + 1 == count || chevrons_.empty()) continue;
        QWidget& chevron = *chevrons_[static_cast<std::size_t>(i)];
        put(chevron, width, {right, 0, gap, height});
        chevron.show();
    }
    return height;
}

int CardRow::stack(int width, bool isTrial) const {
    int y = 0;
    for (QWidget* const card : cards_) {
        const int height = card->sizeHint().height();
        if (!isTrial) put(*card, width, {0, y, width, height});
        y += height + stackGap;
    }
    if (!isTrial)
        for (QWidget* const chevron : chevrons_)
            chevron->hide();
    return y - stackGap;
}

}  // namespace quorvane
