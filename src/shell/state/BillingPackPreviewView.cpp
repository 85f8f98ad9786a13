#include "shell/state/BillingPackPreviewView.h"

#include <utility>

namespace quorvane {

std::string label(BillingPreviewTab tab, const Localization& localization) {
    switch (tab) {
    case BillingPreviewTab::report: return localization.text("billing_preview_report");
    case BillingPreviewTab::email: return localization.text("billing_preview_email");
    }
    return {};
}

BillingPackPreviewView::BillingPackPreviewView(std::string markdown, std::string emailBody, Copy copy)
    : markdown_(std::move(markdown)), emailBody_(std::move(emailBody)), copy_(std::move(copy)) {}

void BillingPackPreviewView::setSelectedTab(BillingPreviewTab tab) {
    if (tab == selectedTab_) return;
    selectedTab_ = tab;
    changed.send();
}

const std::string& BillingPackPreviewView::shownText() const {
    return selectedTab_ == BillingPreviewTab::report ? markdown_ : emailBody_;
}

void BillingPackPreviewView::copy() {
    copy_(shownText());
    showingCopyConfirmation_ = true;
    changed.send();
}

void BillingPackPreviewView::closeCopyConfirmation() {
    if (!std::exchange(showingCopyConfirmation_, false)) return;
    changed.send();
}

}  // namespace quorvane
