#include "shell/billing/BillingActions.h"

#include "shell/look/Boxes.h"
#include "shell/look/Controls.h"
#include "shell/look/FlowLayout.h"
#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Theme.h"

namespace quorvane {
namespace {

constexpr int actionGap = 8;
constexpr int hintGap = 12;
constexpr int hintIconSize = 15;

}  // namespace

BillingActions::BillingActions(BillingDashboardView& dashboard, const Localization& localization, QWidget* parent)
    : QWidget(parent), dashboard_(dashboard), localization_(localization), parts_(lineBox(hintGap, this)),
      hint_(new QWidget), words_(new Label({}, TypeRole::labelPlain, &Theme::text3)) {
    auto* const hint = lineBox(6, hint_);
    hint->addWidget(new IconView(QStringLiteral("info"), hintIconSize, &Theme::text3));
    hint->addWidget(words_, 1);
    words_->setElided(true);
    buttons_ = {add(localization.text("billing_preview_pack"), "doc-mag", &BillingDashboardView::previewPack),
                add(localization.text("billing_copy_email"), "mail", &BillingDashboardView::copyEmail),
                add(localization.text("billing_copy_social_post"), "megaphone", &BillingDashboardView::copySocialPost),
                add(localization.text("billing_export_pack"), "doc", &BillingDashboardView::exportPack)};
    setKind(*buttons_.back(), "primary");
    auto* const buttons = new FlowLayout(actionGap);
    buttons->setAlignment(Qt::AlignRight);
    for (QPushButton* const button : buttons_)
        buttons->addWidget(button);
    parts_->addWidget(hint_);
    parts_->addLayout(buttons, 1);
}

QPushButton* BillingActions::add(const std::string& text, const char* iconName, void (BillingDashboardView::*act)()) {
    auto* const button = pushButton(qt(text));
    button->setIcon(icon(QString::fromLatin1(iconName)));
    connect(button, &QAbstractButton::clicked, this, [this, act] { (dashboard_.*act)(); });
    return button;
}

void BillingActions::refresh() {
    canBill_ = dashboard_.canBill();
    const std::string hint = canBill_ ? localization_.text("billing_double_click_hint")
                                      : localization_.text("billing_actions_disabled_hint");
    for (QPushButton* const button : buttons_) {
        button->setEnabled(canBill_);
        button->setAccessibleDescription(canBill_ ? QString() : qt(hint));
    }
    words_->setText(qt(hint));
    words_->setColor(canBill_ ? &Theme::text3 : &Theme::text2);
    arrange();
}

void BillingActions::arrange() {
    int all = hint_->sizeHint().width() + hintGap;
    for (const QPushButton* const button : buttons_)
        all += actionGap + button->sizeHint().width();
    const bool isBeside = all <= width();
    parts_->setDirection(!canBill_  ? QBoxLayout::BottomToTop
                         : isBeside ? QBoxLayout::LeftToRight
                                    : QBoxLayout::TopToBottom);
    parts_->setAlignment(hint_, canBill_ ? Qt::Alignment() : Qt::AlignRight);
}

void BillingActions::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    arrange();
}

}  // namespace quorvane
