#include "shell/settings/SettingsSection.h"

#include "shell/look/AccessibleRole.h"
#include "shell/look/Card.h"
#include "shell/look/Label.h"
#include "shell/look/Theme.h"

#include <QHBoxLayout>
#include <QResizeEvent>
#include <QVBoxLayout>
#include <algorithm>

namespace quorvane {
namespace {

constexpr int cardPadding = 16;
constexpr int edge = 1;
constexpr int ruleGap = 11;
constexpr int lineGap = 3;
constexpr int controlGap = 16;

}  // namespace

SettingsRow::SettingsRow(const QString& title, QWidget* control, QWidget* parent)
    : QWidget(parent), control_(control), title_(new Label(title, TypeRole::body, &Theme::text)),
      help_(new Label({}, TypeRole::labelPlain, &Theme::text2)), head_(new QHBoxLayout),
      column_(new QVBoxLayout(this)) {
    if (control_->accessibleName().isEmpty()) control_->setAccessibleName(title);
    title_->setBuddy(control_);  // a combo box is named by its label alone
    help_->setWordWrap(true);
    help_->hide();
    head_->setSpacing(controlGap);
    head_->addWidget(title_, 1);
    head_->addWidget(control_);
    column_->setContentsMargins(0, 0, 0, 0);
    column_->setSpacing(lineGap);
    column_->setSizeConstraint(QLayout::SetNoConstraint);  // it may get as narrow as its widest part
    column_->addLayout(head_);
    column_->addWidget(help_);
}

void SettingsRow::setTitle(const QString& title) {
    title_->setText(title);
    control_->setAccessibleName(title);
}

void SettingsRow::setHelp(const QString& help) {
    help_->setText(help);
    help_->setVisible(!help.isEmpty());
    control_->setAccessibleDescription(help);
}

void SettingsRow::addLine(QWidget* line) {
    column_->insertWidget(column_->count() - 1, line);
}

QSize SettingsRow::minimumSizeHint() const {
    const int widest = std::max(title_->minimumSizeHint().width(), control_->minimumSizeHint().width());
    return {widest, QWidget::minimumSizeHint().height()};
}

void SettingsRow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const int wanted = title_->sizeHint().width() + controlGap + control_->sizeHint().width();
    const bool isBeside = wanted <= event->size().width();
    head_->setDirection(isBeside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    head_->setSpacing(isBeside ? controlGap : lineGap);
    head_->setAlignment(control_, isBeside ? Qt::Alignment() : Qt::AlignLeft);
}

SettingsSection::SettingsSection(const QString& title, QWidget* parent) : QWidget(parent), rows_(new QVBoxLayout) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(7);
    auto* const head = new Label(title, TypeRole::label, &Theme::text2);
    head->setContentsMargins(2, 0, 2, 0);
    auto* const card = new Card;
    setAccessibleRole(*card, QAccessible::Grouping, title);
    column->addWidget(head);
    column->addWidget(card);
    card->setLayout(rows_);
    rows_->setContentsMargins(cardPadding + edge, cardPadding, cardPadding + edge, cardPadding - edge);
    rows_->setSpacing(ruleGap);
}

QWidget* SettingsSection::addRow(QWidget* row) {
    if (rows_->count() == 0) {
        rows_->addWidget(row);
        return row;
    }
    auto* const ruled = new QWidget;
    auto* const column = new QVBoxLayout(ruled);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(ruleGap);
    column->addWidget(new Separator);
    column->addWidget(row);
    rows_->addWidget(ruled);
    return ruled;
}

}  // namespace quorvane
