#include "shell/praise/PreviewCarousel.h"

#include "shell/look/Controls.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"
#include "shell/praise/PreviewTile.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QPainter>
#include <algorithm>
#include <utility>

namespace quorvane {
namespace {

constexpr QSize pictureSize(80, 120);  // 0.133 of the card
constexpr int dotSide = 6;
constexpr int dotPitch = 12;
constexpr int dotRoom = 16;

}  // namespace

PreviewCarousel::PreviewCarousel(const Localization& localization, std::function<void(const std::string&)> onSelect,
                                 QWidget* parent)
    : QWidget(parent), localization_(localization), onSelect_(std::move(onSelect)),
      previous_(iconButton(QStringLiteral("left"), qt(localization.text("a11y_previous_previews")), "small")),
      next_(iconButton(QStringLiteral("right"), qt(localization.text("a11y_next_previews")), "small")),
      row_(new QHBoxLayout), choice_(new QButtonGroup(this)) {
    auto* const line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, dotRoom);
    line->addWidget(previous_);
    line->addStretch(1);
    line->addLayout(row_);
    line->addStretch(1);
    line->addWidget(next_);
    row_->setSpacing(0);
    connect(previous_, &QAbstractButton::clicked, this, [this] { showGroup(group_ - 1); });
    connect(next_, &QAbstractButton::clicked, this, [this] { showGroup(group_ + 1); });
}

void PreviewCarousel::setGroups(const std::vector<std::vector<AppStat>>& groups) {
    if (groups == groups_) return;
    const bool isSame = std::ranges::equal(
        groups, groups_, [](const auto& a, const auto& b) { return std::ranges::equal(a, b, {}, appKey, appKey); });
    groups_ = groups;
    if (isSame) return;  // the same applications in other colours
    group_ = 0;
    setVisible(!groups_.empty());
    fill();
}

void PreviewCarousel::setPreviews(const std::map<std::string, ShareImageWindow::Image>& previews) {
    // A preview that is rendered anew stays until its successor is there.
    for (const auto& [key, image] : previews)
        previews_[key] = image;
    for (const auto& [key, tile] : tiles_)
        if (const auto found = previews_.find(key); found != previews_.end()) tile->setImage(found->second);
}

void PreviewCarousel::setSelectedKey(const std::optional<std::string>& key) {
    selectedKey_ = key;
    choice_->setExclusive(false);
    for (const auto& [tileKey, tile] : tiles_)
        tile->setChecked(tileKey == key);
    choice_->setExclusive(true);
}

void PreviewCarousel::showGroup(std::size_t group) {
    group_ = group;
    fill();
}

void PreviewCarousel::fill() {
    for (const auto& [key, tile] : tiles_) {
        tile->hide();
        tile->deleteLater();
    }
    tiles_.clear();
    if (!groups_.empty()) {
        for (const AppStat& stat : groups_[group_]) {
            auto* const tile = new PreviewTile(qt(stat.appName), pictureSize);
            tile->setFixedWidth(92);
            tile->setAccessibleName(qt(localization_.text("a11y_card_highlighting", stat.appName)));
            choice_->addButton(tile);
            const std::string key = appKey(stat);
            connect(tile, &QAbstractButton::clicked, this, [this, key] { onSelect_(key); });
            row_->addWidget(tile);
            tiles_[key] = tile;
        }
    }
    const bool hasMore = groups_.size() > 1;
    previous_->setVisible(hasMore);
    next_->setVisible(hasMore);
    previous_->setEnabled(group_ > 0);
    next_->setEnabled(group_ + 1 < groups_.size());
    setPreviews({});
    setSelectedKey(selectedKey_);
    update();
}

void PreviewCarousel::paintEvent(QPaintEvent* /*event*/) {
    if (groups_.size() < 2) return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const auto count = static_cast<int>(groups_.size());
    double x = (width() - (count - 1) * dotPitch - dotSide) / 2.0;
    for (int i = 0; i < count; ++i) {
        const int place = isRightToLeft() ? count - 1 - i : i;
        painter.setBrush(place == static_cast<int>(group_) ? theme().accent : theme().control);
        painter.drawEllipse(QRectF(x, height() - dotSide - 2, dotSide, dotSide));
        x += dotPitch;
    }
}

}  // namespace quorvane
