#include "shell/look/FlowLayout.h"

#include <QStyle>
#include <QWidget>
#include <algorithm>
#include <utility>

namespace quorvane {

FlowLayout::FlowLayout(int spacing, QWidget* parent) : QLayout(parent), spacing_(spacing) {
    setContentsMargins(0, 0, 0, 0);
}

FlowLayout::~FlowLayout() = default;

void FlowLayout::addItem(QLayoutItem* item) {
    items_.emplace_back(item);
}

int FlowLayout::count() const {
    return static_cast<int>(items_.size());
}

QLayoutItem* FlowLayout::itemAt(int index) const {
    return index >= 0 && index < count() ? items_[static_cast<std::size_t>(index)].get() : nullptr;
}

QLayoutItem* FlowLayout::takeAt(int index) {
    if (index < 0 || index >= count()) return nullptr;
    const auto at = items_.begin() + index;
    QLayoutItem* taken = at->release();
    items_.erase(at);
    return taken;
}

int FlowLayout::heightForWidth(int width) const {
    return arrange(QRect(0, 0, width, 0), true);
}

QSize FlowLayout::minimumSize() const {
    QSize smallest;
    for (const auto& item : items_) {
        if (!item->isEmpty()) smallest = smallest.expandedTo(item->minimumSize());
    }
    const QMargins margins = contentsMargins();
    return smallest + QSize(margins.left() + margins.right(), margins.top() + margins.bottom());
}

void FlowLayout::setGeometry(const QRect& rectangle) {
    QLayout::setGeometry(rectangle);
    arrange(rectangle, false);
}

/// Returns the height that it takes; places nothing when it is only a trial.
int FlowLayout::arrange(const QRect& rectangle, bool isTrial) const {
    const QMargins margins = contentsMargins();
    const QRect inner = rectangle.marginsRemoved(margins);
    const Qt::LayoutDirection direction =
        parentWidget() == nullptr ? Qt::LeftToRight : parentWidget()->layoutDirection();
    std::vector<std::pair<QLayoutItem*, QRect>> line;
    int x = inner.left();
    int y = inner.top();
    int lineHeight = 0;
    const bool isAtEnd = alignment().testFlag(Qt::AlignRight);
    const auto endLine = [&] {
        const int rest = isAtEnd ? std::max(inner.left() + inner.width() + spacing_ - x, 0) : 0;
        for (auto& [item, place] : line) {
            place.translate(rest, (lineHeight - place.height()) / 2);  // centred, where heights differ
            if (!isTrial) item->setGeometry(QStyle::visualRect(direction, inner, place));
        }
        line.clear();
        y += lineHeight;
        x = inner.left();
        lineHeight = 0;
    };
    for (const auto& item : items_) {
        if (item->isEmpty()) continue;
        const QSize size = item->sizeHint().boundedTo(QSize(std::max(inner.width(), 1), QWIDGETSIZE_MAX));
        if (!line.empty() && x + size.width() > inner.left() + inner.width()) {
            endLine();
            y += spacing_;
        }
        line.emplace_back(item.get(), QRect(QPoint(x, y), size));
        x += size.width() + spacing_;
        lineHeight = std::max(lineHeight, size.height());
    }
    endLine();
    return y - rectangle.top() + margins.bottom();
}

}  // namespace quorvane
