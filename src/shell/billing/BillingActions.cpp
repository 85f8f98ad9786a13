#include "shell/billing/BillingActions.h"

#include "shell/look/Controls.h"
#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Theme.h"

#include <QHBoxLayout>
#include <algorithm>

namespace quorvane {
namespace {

constexpr int buttonGap = 8;
constexpr int hintGap = 12;
constexpr int iconSize = 15;

}  // namespace

BillingActions::BillingActions(BillingDashboardView& dashboard, const Localization& localization, QWidget* parent)
    : ArrangedWidget(parent), dashboard_(dashboard), localization_(localization), hint_(new QWidget(this)),
      words_(new Label({}, TypeRole::labelPlain, &Theme::text3)) {
    auto* const row = new QHBoxLayout(hint_);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(6);
    row->addWidget(new IconView(QStringLiteral("info"), iconSize, &Theme::text3));
    row->addWidget(words_, 1);
    words_->setElided(true);
    buttons_ = {add(localization.text("billing_preview_pack"), "doc-mag", &BillingDashboardView::previewPack),
                add(localization.text("billing_copy_email"), "mail", &BillingDashboardView::copyEmail),
                add(localization.text("billing_copy_social_post"), "megaphone", &BillingDashboardView::copySocialPost),
                add(localization.text("billing_export_pack"), "doc", &BillingDashboardView::exportPack)};
    setKind(*buttons_.back(), "primary");
}

QPushButton* BillingActions::add(const std::string& text, const char* iconName, void (BillingDashboardView::*act)()) {
    auto* const button = pushButton(qt(text), "plain", this);
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
    rearrange();
}

int BillingActions::arrange(int width, bool isTrial) const {
    const QSize hintSize = hint_->sizeHint().boundedTo({width, hint_->sizeHint().height()});
    if (!canBill_) {
        const int below = arrangeButtons(width, 0, isTrial) + hintGap;
        if (!isTrial) put(*hint_, width, {QPoint(width - hintSize.width(), below), hintSize});
        return below + hintSize.height();
    }
    int all = hintSize.width();
    for (const QPushButton* const button : buttons_)
        all += buttonGap + button->sizeHint().width();
    const int buttonHeight = buttons_.front()->sizeHint().height();
    const bool isBeside = all + hintGap <= width;
    if (!isTrial) put(*hint_, width, {{0, isBeside ? (buttonHeight - hintSize.height()) / 2 : 0}, hintSize});
    return arrangeButtons(width, isBeside ? 0 : hintSize.height() + hintGap, isTrial);
}

/// In lines that end where the page ends; returns where the last one does.
int BillingActions::arrangeButtons(int width, int top, bool isTrial) const {
    int y = top;
    for (auto first = buttons_.begin(); first != buttons_.end();) {
        auto end = first;
        int needed = -buttonGap;
        for (; end != buttons_.end(); ++end) {
            const int more = buttonGap + (*end)->sizeHint().width();
            if (end != first && needed + more > width) break;
            needed += more;
        }
        int x = std::max(width - needed, 0);
        for (auto button = first; button != end; ++button) {
            const QSize size = (*button)->sizeHint();
            if (!isTrial) put(**button, width, {QPoint(x, y), size});
            x += size.width() + buttonGap;
        }
        y += (*first)->sizeHint().height() + buttonGap;
        first = end;
    }
    return y - buttonGap;
}

}  // namespace quorvane
