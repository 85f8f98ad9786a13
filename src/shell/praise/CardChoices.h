#pragma once

#include "l10n/Localization.h"
#include "shell/state/ShareImageWindow.h"

#include <QWidget>
#include <map>
#include <string>

class QVBoxLayout;
class QCheckBox;

namespace quorvane {

class PreviewCarousel;
class PreviewTile;
class SchemeChip;

/// Styles, colours, the two switches and the carousel: what the share window offers beside the card.
class CardChoices : public QWidget {
public:
    CardChoices(ShareImageWindow& state, const Localization& localization, QWidget* parent = nullptr);

    /// Shows what the state says now.
    void follow();

private:
    void addStyles(QVBoxLayout& page);
    void addSchemes(QVBoxLayout& page);
    void addSwitches(QVBoxLayout& page);

    ShareImageWindow& state_;
    const Localization& localization_;
    std::map<CardStyle, PreviewTile*> styles_;
    std::map<ColorScheme, SchemeChip*> schemes_;
    QCheckBox* distribution_ = nullptr;
    QCheckBox* highlight_ = nullptr;
    PreviewCarousel* carousel_ = nullptr;
};

/// What the window calls them.
[[nodiscard]] std::string nameOf(CardStyle style, const Localization& localization);
[[nodiscard]] std::string nameOf(ColorScheme scheme, const Localization& localization);

}  // namespace quorvane
