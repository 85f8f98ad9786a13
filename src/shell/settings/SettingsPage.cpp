#include "shell/settings/SettingsPage.h"

#include "shell/look/AccessibleRole.h"
#include "shell/look/Boxes.h"
#include "shell/look/Card.h"
#include "shell/look/Controls.h"
#include "shell/look/IconView.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"

#include <QResizeEvent>
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
      help_(new Label({}, TypeRole::labelPlain, &Theme::text2)), head_(lineBox(controlGap)),
      column_(columnBox(lineGap, this)) {
    if (control_->accessibleName().isEmpty()) control_->setAccessibleName(title);
    title_->setBuddy(control_);  // a combo box is named by its label alone
    help_->setWordWrap(true);
    help_->hide();
    head_->addWidget(title_, 1);
    head_->addWidget(control_);
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

StateRow::StateRow(QWidget* parent) : StateRow(new QWidget, parent) {}

StateRow::StateRow(QWidget* control, QWidget* parent)
    : SettingsRow({}, control, parent), icon_(new IconView({}, 16, &Theme::ok)),
      word_(new Label({}, TypeRole::label, &Theme::ok)), button_(pushButton({}, "small")) {
    auto* const line = lineBox(6, control);
    line->addWidget(icon_);
    line->addWidget(word_);
    line->addWidget(button_);
}

void StateRow::setState(const State& state) {
    setTitle(state.title);
    setHelp(state.help);
    icon_->setIcon(state.iconName, inkOf(state.tone));
    word_->setText(state.word);
    word_->setColor(inkOf(state.tone));
    button_->setText(state.mend);
    button_->setAccessibleName(state.title + QStringLiteral(", ") + state.mend);
    button_->setVisible(!state.mend.isEmpty());
}

SettingsSection::SettingsSection(MessageKey<> title, const Localization& localization)
    : localization_(localization), rows_(new QVBoxLayout) {
    auto* const head = new Label(qt(localization.text(title)), TypeRole::label, &Theme::text2);
    head->setContentsMargins(2, 0, 2, 0);
    auto* const card = new Card;
    setAccessibleRole(*card, QAccessible::Grouping, head->text());
    auto* const column = columnBox(7, this);
    column->addWidget(head);
    column->addWidget(card);
    card->setLayout(rows_);
    rows_->setContentsMargins(cardPadding + edge, cardPadding, cardPadding + edge, cardPadding - edge);
    rows_->setSpacing(ruleGap);
}

void SettingsSection::addRow(QWidget* row, Qt::Alignment alignment) {
    auto* const ruled = new QWidget;
    auto* const column = columnBox(ruleGap, ruled);
    if (rows_->count() > 0) column->addWidget(new Separator);
    column->addWidget(row, 0, alignment);
    rows_->addWidget(ruled);
}

SettingsRow* SettingsSection::addRow(MessageKey<> title, QWidget* control) {
    auto* const row = new SettingsRow(qt(localization_.text(title)), control);
    addRow(row);
    return row;
}

SettingsRow* SettingsSection::addSwitch(MessageKey<> title, bool& isOn, std::function<void()> changed) {
    auto* const box = switchBox({});
    box->setChecked(isOn);
    connect(box, &QAbstractButton::toggled, this, [&isOn, changed = std::move(changed)](bool isNowOn) {
        isOn = isNowOn;
        if (changed) changed();
    });
    return addRow(title, box);
}

SettingsPage::SettingsPage(const Localization& localization, QWidget* parent)
    : QWidget(parent), localization_(localization), sections_(columnBox(Metrics::cardGap, this)) {}

SettingsSection& SettingsPage::addSection(MessageKey<> title) {
    auto* const section = new SettingsSection(title, localization_);
    add(section);
    return *section;
}

void SettingsPage::add(QWidget* section) {
    sections_->addWidget(section);
}

}  // namespace quorvane
