#include "shell/praise/CardChoices.h"

#include "shell/look/Controls.h"
#include "shell/look/FlowLayout.h"
#include "shell/look/Label.h"
#include "shell/look/Theme.h"
#include "shell/praise/PreviewCarousel.h"
#include "shell/praise/PreviewTile.h"
#include "shell/praise/SchemeChip.h"

#include <QButtonGroup>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace quorvane {
namespace {

constexpr QSize miniatureSize(71, 106);  // 0.118 of the card

void check(QAbstractButton& button, bool isChecked) {
    const QSignalBlocker blocker(button);
    button.setChecked(isChecked);
}

}  // namespace

std::string nameOf(CardStyle style, const Localization& localization) {
    switch (style) {
    case CardStyle::clean: return localization.text("ui_style_clean");
    case CardStyle::elegantShadow: return localization.text("ui_style_elegantShadow");
    case CardStyle::glassmorphism: return localization.text("ui_style_glassmorphism");
    case CardStyle::neumorphism: return localization.text("ui_style_neumorphism");
    case CardStyle::gradientCard: return localization.text("ui_style_gradientCard");
    case CardStyle::darkMode: return localization.text("ui_style_darkMode");
    case CardStyle::businessCard: return localization.text("ui_style_businessCard");
    case CardStyle::artistic: return localization.text("ui_style_artistic");
    case CardStyle::minimal: return localization.text("ui_style_minimal");
    case CardStyle::luxury: return localization.text("ui_style_luxury");
    case CardStyle::techFuture: return localization.text("ui_style_techFuture");
    case CardStyle::warmPaper: return localization.text("ui_style_warmPaper");
    }
    return {};
}

std::string nameOf(ColorScheme scheme, const Localization& localization) {
    switch (scheme) {
    case ColorScheme::vibrant: return localization.text("ui_scheme_vibrant");
    case ColorScheme::pastel: return localization.text("ui_scheme_pastel");
    case ColorScheme::ocean: return localization.text("ui_scheme_ocean");
    case ColorScheme::sunset: return localization.text("ui_scheme_sunset");
    case ColorScheme::forest: return localization.text("ui_scheme_forest");
    case ColorScheme::purple: return localization.text("ui_scheme_purple");
    case ColorScheme::monochrome: return localization.text("ui_scheme_monochrome");
    case ColorScheme::random: return localization.text("ui_scheme_random");
    }
    return {};
}

CardChoices::CardChoices(ShareImageWindow& state, const Localization& localization, QWidget* parent)
    : QWidget(parent), state_(state), localization_(localization) {
    auto* const page = new QVBoxLayout(this);
    page->setContentsMargins(24, 12, 24, 2);
    page->setSpacing(6);
    addStyles(*page);
    addSchemes(*page);
    addSwitches(*page);
    carousel_ = new PreviewCarousel(localization, [this](const std::string& key) { state_.setSelectedAppKey(key); });
    page->addWidget(carousel_);
    page->addStretch(1);
    follow();
}

void CardChoices::addStyles(QVBoxLayout& page) {
    page.addWidget(new Label(qt(localization_.text("ui_card_style")), TypeRole::label, &Theme::text2));
    auto* const group = new QButtonGroup(this);
    auto* const flow = new FlowLayout(2);
    for (const auto& [style, raw] : RawValues<CardStyle>::table) {
        auto* const tile = new PreviewTile(qt(nameOf(style, localization_)), miniatureSize);
        group->addButton(tile);
        flow->addWidget(tile);
        styles_[style] = tile;
        connect(tile, &QAbstractButton::toggled, this, [this, chosen = style](bool isChecked) {
            if (isChecked) state_.setSelectedStyle(chosen);
        });
    }
    page.addLayout(flow);
}

void CardChoices::addSchemes(QVBoxLayout& page) {
    page.addWidget(new Label(qt(localization_.text("ui_card_colors")), TypeRole::label, &Theme::text2));
    auto* const group = new QButtonGroup(this);
    auto* const flow = new FlowLayout(8);
    for (const auto& [scheme, raw] : RawValues<ColorScheme>::table) {
        auto* const chip = new SchemeChip(qt(nameOf(scheme, localization_)), scheme);
        group->addButton(chip);
        flow->addWidget(chip);
        schemes_[scheme] = chip;
        connect(chip, &QAbstractButton::toggled, this, [this, chosen = scheme](bool isChecked) {
            if (isChecked) state_.setSelectedColorScheme(chosen);
        });
    }
    page.addLayout(flow);
}

void CardChoices::addSwitches(QVBoxLayout& page) {
    distribution_ = switchBox(qt(localization_.text("share_card_show_distribution")));
    highlight_ = switchBox(qt(localization_.text("share_card_highlight_app")));
    connect(distribution_, &QAbstractButton::toggled, this,
            [this](bool isOn) { state_.setShowTimeDistribution(isOn); });
    connect(highlight_, &QAbstractButton::toggled, this, [this](bool isOn) { state_.setHighlighting(isOn); });
    auto* const line = new QHBoxLayout;
    line->setContentsMargins(0, 2, 0, 2);
    line->setSpacing(32);
    line->addWidget(distribution_);
    line->addWidget(highlight_);
    line->addStretch(1);
    page.addLayout(line);
}

void CardChoices::follow() {
    for (const auto& [style, tile] : styles_) {
        // A miniature that is rendered anew stays until its successor is there.
        const auto image = state_.styleImages().find(style);
        if (image != state_.styleImages().end()) tile->setImage(image->second);
        check(*tile, style == state_.selectedStyle());
    }
    for (const auto& [scheme, chip] : schemes_)
        check(*chip, scheme == state_.selectedColorScheme());
    if (distribution_->isChecked() != state_.showTimeDistribution())
        distribution_->setChecked(state_.showTimeDistribution());
    if (highlight_->isChecked() != state_.selectedAppKey().has_value())
        highlight_->setChecked(state_.selectedAppKey().has_value());
    highlight_->setEnabled(!state_.workingAppStats().empty());
    carousel_->setGroups(state_.groupedPreviews());
    carousel_->setPreviews(state_.previewImages());
    carousel_->setSelectedKey(state_.selectedAppKey());
}

}  // namespace quorvane
