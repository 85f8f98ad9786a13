#include "shell/billing/ReviewRowEditor.h"

#include "shell/look/Boxes.h"
#include "shell/look/Controls.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QComboBox>
#include <QGridLayout>
#include <algorithm>

namespace quorvane {
namespace {

constexpr int narrowRowBelow = 820;
constexpr int tightRowBelow = 900;  // the words need some of the project's room
constexpr int rowPadding = 25;      // as the head of the sheet has it
constexpr int rowIconRoom = 32;
constexpr int leastLineHeight = 60;
constexpr int controlGap = 12;
constexpr int buttonGap = 6;
constexpr int beforeControls = 16;
constexpr int projectWidth = 164;
constexpr int tightProjectWidth = 148;
constexpr int statusWidth = 118;
constexpr int squareSide = 11;

int scaled(int length) {
    return static_cast<int>(length * std::max(1.0, typeScale()));
}

int firstLineHeight() {
    return std::max(leastLineHeight, lineHeight(TypeRole::bodyStrong) + lineHeight(TypeRole::labelPlain) + 24);
}

QComboBox* rowField(const QString& name) {
    auto* const field = kind("small quiet", new QComboBox);
    field->setAccessibleName(name);
    field->setToolTip(name);
    return field;
}

QPushButton* statusButton(const QString& text, const char* iconName, const char* chosenKind) {
    auto* const button = pushButton(text, "small");
    setKind(*button, chosenKind, true);
    button->setIcon(quorvane::icon(QString::fromLatin1(iconName)));
    button->setCheckable(true);
    return button;
}

}  // namespace

QIcon ReviewRowEditor::icon(const Project* project) {
    if (project == nullptr) return {};
    return projectIcon(project->color().value_or(""), squareSide);
}

QIcon ReviewRowEditor::icon(BillingStatus status) {
    switch (status) {
    case BillingStatus::review: return dotIcon(&Theme::orange);
    case BillingStatus::billable: return dotIcon(&Theme::ok);
    case BillingStatus::nonBillable: return dotIcon(&Theme::control);
    case BillingStatus::excluded: return dotIcon(&Theme::text3);
    }
    return {};
}

ReviewRowEditor::ReviewRowEditor(BillingReviewQueueView& queue, QAbstractItemModel& projects,
                                 const Localization& localization, QWidget* parent)
    : QWidget(parent), queue_(queue), project_(rowField(qt(localization.text("project")))),
      status_(rowField(qt(localization.text("billing_status")))), grid_(new QGridLayout(this)),
      fields_(lineBox(controlGap)), icon_(new QSpacerItem(rowIconRoom, 0, QSizePolicy::Fixed)),
      words_(new QSpacerItem(0, 0, QSizePolicy::Expanding)) {
    buttons_ = {statusButton(qt(localization.text("review_queue_mark_billable")), "check", "ok"),
                statusButton(qt(localization.text("review_queue_exclude")), "exclude", "quiet")};
    project_->setModel(&projects);
    for (const BillingStatus status : BillingReviewQueueView::statuses)
        status_->addItem(icon(status), qt(label(status, localization)));
    layOut();
    connect(project_, &QComboBox::activated, this,
            [this](int choice) { chooseProject(static_cast<std::size_t>(choice)); });
    connect(status_, &QComboBox::activated, this,
            [this](int choice) { give(BillingReviewQueueView::statuses.at(static_cast<std::size_t>(choice))); });
    for (std::size_t i = 0; i < buttons_.size(); ++i)
        connect(buttons_[i], &QAbstractButton::clicked, this, [this, i] { give(buttonStatuses[i]); });
    hide();
}

std::array<QWidget*, 4> ReviewRowEditor::controls() const {
    return {project_, status_, buttons_[0], buttons_[1]};
}

void ReviewRowEditor::layOut() {
    grid_->setContentsMargins(rowPadding, 0, rowPadding, 0);
    grid_->setSpacing(0);
    auto* const buttons = lineBox(buttonGap);
    for (QPushButton* const button : buttons_)
        buttons->addWidget(button);
    buttons->insertSpacing(0, controlGap);
    fields_->addWidget(project_);
    fields_->addWidget(status_);
    status_->setFixedWidth(scaled(statusWidth));
    grid_->addItem(icon_, 0, 0);
    grid_->addItem(words_, 0, 1);
    grid_->setColumnMinimumWidth(2, beforeControls);
    grid_->addLayout(fields_, 0, 3);
    grid_->addLayout(buttons, 0, 4);
    grid_->setColumnStretch(1, 1);
    grid_->setRowMinimumHeight(0, firstLineHeight());
    grid_->setRowStretch(2, 1);
    for (QWidget* const control : controls())
        control->ensurePolished();  // also where it is never shown
}

int ReviewRowEditor::heightFor(int width) const {
    return firstLineHeight() + (width < narrowRowBelow ? project_->sizeHint().height() + 8 : 0);
}

void ReviewRowEditor::place(const QPoint& topLeft, int width) {
    const QRect place(topLeft, QSize(width, heightFor(width)));
    if (place == geometry() && layoutDirection() == direction_) return;
    direction_ = layoutDirection();
    const bool isNarrow = width < narrowRowBelow;
    const int room = width - 2 * rowPadding - rowIconRoom - controlGap - status_->minimumWidth();
    const int most = scaled(isNarrow || width >= tightRowBelow ? projectWidth : tightProjectWidth);
    project_->setFixedWidth(std::clamp(room, 60, most));
    grid_->removeItem(fields_);
    fields_->setParent(nullptr);
    fields_->setContentsMargins(0, 0, 0, isNarrow ? 4 : 0);
    if (isNarrow)
        grid_->addLayout(fields_, 1, 1, 1, 4, Qt::AlignLeft);
    else
        grid_->addLayout(fields_, 0, 3);
    setGeometry(place);
    grid_->setGeometry(rect());
    setMask(childrenRegion());
}

QRect ReviewRowEditor::iconPlace() const {
    return icon_->geometry();
}

QRect ReviewRowEditor::wordsPlace() const {
    return words_->geometry();
}

void ReviewRowEditor::setReachedByTab(bool isReached) {
    for (QWidget* const control : controls())
        control->setFocusPolicy(isReached ? Qt::StrongFocus : Qt::NoFocus);
}

bool ReviewRowEditor::holdsFocus() const {
    const QWidget* focused = window()->focusWidget();
    return focused != nullptr && isAncestorOf(focused);
}

void ReviewRowEditor::setRow(int row) {
    if (row == row_) return;
    row_ = row;
    setVisible(row_ >= 0);
    refresh();
}

void ReviewRowEditor::refresh() {
    if (row_ < 0) return;
    const BillingReviewRecordRow& row = queue_.row(static_cast<std::size_t>(row_));
    const auto& projects = queue_.projects();
    const auto found = std::ranges::find(projects, row.project);
    const bool isOther = row.project != nullptr && found == projects.end();
    project_->setPlaceholderText(isOther ? qt(row.project->name()) : QString());
    project_->setCurrentIndex(isOther ? -1 : static_cast<int>(found - projects.begin()));
    status_->setCurrentIndex(static_cast<int>(row.status));
    for (std::size_t i = 0; i < buttons_.size(); ++i)
        buttons_[i]->setChecked(row.status == buttonStatuses[i]);
    for (QWidget* const control : controls())
        control->setAccessibleDescription(qt(row.title));
}

void ReviewRowEditor::chooseProject(std::size_t choice) {
    if (row_ < 0) return;
    const auto& projects = queue_.projects();
    queue_.setProject(static_cast<std::size_t>(row_), choice < projects.size() ? projects[choice] : nullptr);
    refresh();
    used.send();
}

void ReviewRowEditor::give(BillingStatus status) {
    if (row_ < 0) return;
    queue_.setStatus(static_cast<std::size_t>(row_), status);
    refresh();
    used.send();
}

void ReviewRowEditor::enterEvent(QEnterEvent* event) {
    QWidget::enterEvent(event);
    entered.send();
}

}  // namespace quorvane
