#include "shell/billing/ReviewBar.h"

#include "shell/look/AccessibleRole.h"
#include "shell/look/Controls.h"
#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"

#include <QHBoxLayout>
#include <QPainter>
#include <cstdint>

namespace quorvane {
namespace {

constexpr int iconSize = 17;
constexpr int buttonMargin = 8;

}  // namespace

ReviewBar::ReviewBar(const Localization& localization, QWidget* parent)
    : QWidget(parent), localization_(localization),
      icon_(new IconView(QStringLiteral("seal"), iconSize, &Theme::ok, this)),
      caption_(new Label({}, TypeRole::bodyStrong, &Theme::text, this)) {
    setAccessibleRole(*this, QAccessible::Grouping);
    auto* const open = pushButton(qt(localization.text("review_queue_open")));
    setKind(*open, "small", true);
    connect(open, &QAbstractButton::clicked, this, [this] { opened.send(); });
    caption_->setElided(true);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(Metrics::cardPadding, buttonMargin, buttonMargin, buttonMargin);
    row->setSpacing(13);
    row->addWidget(icon_);
    row->addWidget(caption_, 1);
    row->addWidget(open);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setCount(0);
}

void ReviewBar::setCount(std::size_t count) {
    count_ = count;
    icon_->setIcon(count > 0 ? QStringLiteral("review-mag") : QStringLiteral("seal"),
                   count > 0 ? &Theme::warn : &Theme::ok);
    caption_->setText(qt(localization_.text("review_queue_count_caption", static_cast<std::int64_t>(count))));
    update();
}

void ReviewBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paintPanel(painter, rect(), Metrics::cardRadius, count_ > 0 ? theme().warnSoft : theme().sunken, QColor());
}

}  // namespace quorvane
