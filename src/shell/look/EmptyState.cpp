#include "shell/look/EmptyState.h"

#include "shell/look/Controls.h"
#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Theme.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace quorvane {
namespace {

constexpr int largeWellSide = 56;
constexpr int widestText = 300;

}  // namespace

EmptyState::EmptyState(const QString& iconName, const QString& title, const QString& text, QWidget* parent)
    : QWidget(parent), layout_(new QVBoxLayout(this)), title_(new Label({}, TypeRole::head, &Theme::text, this)),
      text_(new Label({}, TypeRole::body, &Theme::text2, this)) {
    auto* icon = new IconView(iconName, 26, &Theme::text2);
    icon->setWell(largeWellSide, largeWellSide / 2.0, &Theme::sunken);
    title_->setAlignment(Qt::AlignCenter);
    title_->setWordWrap(true);
    text_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    text_->setWordWrap(true);
    text_->setMaximumWidth(widestText);
    setTexts(title, text);
    // Between stretches and not aligned: an aligned text would be asked for its height at the full width.
    auto* middle = new QHBoxLayout;
    middle->addStretch(1);
    middle->addWidget(text_, widestText);
    middle->addStretch(1);
    layout_->setSpacing(0);
    layout_->setContentsMargins(16, 16, 16, 16);
    layout_->addStretch(1);
    layout_->addWidget(icon, 0, Qt::AlignHCenter);
    layout_->addSpacing(14);
    layout_->addWidget(title_);
    layout_->addSpacing(6);
    layout_->addLayout(middle);
    layout_->addStretch(1);
}

void EmptyState::setTexts(const QString& title, const QString& text) {
    if (title == title_->text() && text == text_->text()) return;
    title_->setText(title);
    text_->setText(text);
    text_->setHidden(text.isEmpty());
}

void EmptyState::addButton(QPushButton* button) {
    layout_->insertSpacing(layout_->count() - 1, 16);
    layout_->insertWidget(layout_->count() - 1, button, 0, Qt::AlignHCenter);
}

}  // namespace quorvane
