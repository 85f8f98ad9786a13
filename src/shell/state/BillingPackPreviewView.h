#pragma once

#include "base/RawValue.h"
#include "base/Signal.h"
#include "l10n/Localization.h"

#include <functional>
#include <string>

namespace quorvane {

/// What the preview shows.
enum class BillingPreviewTab { report, email };

template <>
struct RawValues<BillingPreviewTab> {
    static constexpr RawValueTable<BillingPreviewTab, 2> table{
        {{BillingPreviewTab::report, "report"}, {BillingPreviewTab::email, "email"}}};
};

[[nodiscard]] std::string label(BillingPreviewTab tab, const Localization& localization);

/// The documents of a bill before they leave the house: two texts, one on show.
class BillingPackPreviewView {
public:
    /// Takes a text to the clipboard.
    using Copy = std::function<void(const std::string& text)>;

    BillingPackPreviewView(std::string markdown, std::string emailBody, Copy copy);

    [[nodiscard]] const std::string& markdown() const { return markdown_; }
    [[nodiscard]] const std::string& emailBody() const { return emailBody_; }

    [[nodiscard]] BillingPreviewTab selectedTab() const { return selectedTab_; }
    void setSelectedTab(BillingPreviewTab tab);
    /// What the chosen tab shows.
    [[nodiscard]] const std::string& shownText() const;

    /// Copies the text on show and asks for its confirmation.
    void copy();
    [[nodiscard]] bool showingCopyConfirmation() const { return showingCopyConfirmation_; }
    void closeCopyConfirmation();

    /// Another tab, or the confirmation came or went.
    Signal<> changed;

private:
    std::string markdown_;
    std::string emailBody_;
    Copy copy_;
    BillingPreviewTab selectedTab_ = BillingPreviewTab::report;
    bool showingCopyConfirmation_ = false;
};

}  // namespace quorvane
