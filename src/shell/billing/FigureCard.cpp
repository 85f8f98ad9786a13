#include "shell/billing/FigureCard.h"

#include "shell/look/AccessibleRole.h"
#include "shell/look/Boxes.h"
#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"

namespace quorvane {
namespace {

constexpr int wellSide = 36;
constexpr int stepIconSize = 18;

}  // namespace

FigureCard::FigureCard(TypeRole valueRole, QWidget* parent)
    : Card(parent), icon_(new IconView({}, stepIconSize, &Theme::accInk)),
      title_(new Label({}, TypeRole::label, &Theme::text2)), value_(new Label({}, valueRole, &Theme::text)),
      caption_(new Label({}, TypeRole::labelPlain, &Theme::text3)) {
    setAccessibleRole(*this, QAccessible::StaticText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);  // as wide as those beside it
    auto* const line = lineBox(12, this);
    line->setContentsMargins(17, 14, 17, 14);
    line->addWidget(icon_, 0, Qt::AlignTop);
    auto* const words = columnBox(2);
    line->addLayout(words, 1);
    title_->setElided(true);
    caption_->setElided(true);
    value_->setFitted(true);
    for (Label* const text : {title_, value_, caption_})
        words->addWidget(text);
    icon_->hide();
}

/// The second step's says how it stands, and its ground the same.
void FigureCard::setIcon(const QString& iconName) {
    const bool isOpen = iconName == QLatin1String("review-mag");
    const bool isSettled = iconName == QLatin1String("seal");
    icon_->setIcon(iconName, isOpen ? &Theme::warn : isSettled ? &Theme::ok : &Theme::accInk);
    icon_->setWell(wellSide, Metrics::cardRadius,
                   isOpen      ? &Theme::warnSoft
                   : isSettled ? &Theme::okSoft
                               : &Theme::accSoft);
    icon_->show();
}

void FigureCard::setContent(const Content& content) {
    title_->setText(content.title);
    value_->setText(isolated(content.value));
    caption_->setText(content.caption);
    setAccessibleName(content.spoken);
}

}  // namespace quorvane
