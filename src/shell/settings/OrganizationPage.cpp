#include "shell/settings/OrganizationPage.h"

#include "shell/look/AccessibleRole.h"
#include "shell/look/Card.h"
#include "shell/look/Controls.h"
#include "shell/look/EmptyState.h"
#include "shell/look/Icons.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/settings/AppPreferenceRow.h"
#include "shell/settings/AppPreferenceSheet.h"
#include "shell/settings/OwnCategories.h"
#include "shell/signals/Subscribe.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QVBoxLayout>
#include <algorithm>
#include <memory>

namespace quorvane {
namespace {

constexpr int emptyHeight = 232;

}  // namespace

OrganizationPage::OrganizationPage(AppCategoryManagementView& view, const Localization& localization, QWidget* parent)
    : QWidget(parent), view_(view), localization_(localization) {
    const QString title = qt(localization.text("app_category_section_title"));
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    auto* const head = new Label(title, TypeRole::label, &Theme::text2);
    head->setContentsMargins(2, 0, 2, 0);
    column->addWidget(head);
    addSearch(*column);
    auto* const card = new Card;
    setAccessibleRole(*card, QAccessible::List, title);
    list_ = new QVBoxLayout(card);
    list_->setContentsMargins(17, 1, 13, 1);
    list_->setSpacing(0);
    column->addWidget(card);
    column->addSpacing(Metrics::cardGap - column->spacing());
    column->addWidget(new OwnCategories(view, localization));
    subscribe(view_.changed, *this, [this] { showRows(); });
    showRows();
}

void OrganizationPage::addSearch(QVBoxLayout& column) {
    const QString placeholder = qt(localization_.text("search_app_placeholder"));
    auto* const field = new QLineEdit;
    field->setPlaceholderText(placeholder);
    field->setAccessibleName(placeholder);
    auto* const glass = new QAction(icon(QStringLiteral("search")), placeholder, field);
    field->addAction(glass, QLineEdit::LeadingPosition);
    field->setText(qt(view_.searchText));
    connect(field, &QLineEdit::textChanged, this, [this](const QString& text) {
        view_.searchText = text.toStdString();
        showRows();
    });
    search_ = field;
    auto* const line = new QHBoxLayout;
    line->setSpacing(8);
    line->addWidget(field, 1);
    line->addWidget(makeAddButton());
    column.addLayout(line);
}

QPushButton* OrganizationPage::makeAddButton() {
    auto* const add = pushButton(qt(localization_.text("add_app_button")));
    add->setIcon(icon(QStringLiteral("plus")));
    connect(add, &QAbstractButton::clicked, this, [this] {
        view_.beginAdding();
        openForm(true);
    });
    return add;
}

void OrganizationPage::showRows() {
    rows_.clear();
    while (const std::unique_ptr<QLayoutItem> item{list_->takeAt(0)}) {
        item->widget()->hide();
        item->widget()->deleteLater();  // its button may be what was pressed
    }
    const auto shown = view_.rows();
    rows_.reserve(shown.size());
    for (const AppCategoryManagementView::Row& row : shown)
        addRow(row);
    if (shown.empty()) list_->addWidget(emptyList());
}

void OrganizationPage::addRow(const AppCategoryManagementView::Row& row) {
    if (!rows_.empty()) list_->addWidget(new Separator);
    auto* const line = new AppPreferenceRow(row, localization_);
    subscribe(line->editWanted, *line, [this, name = row.appName] {
        view_.beginEditing(name);
        openForm(false);
    });
    subscribe(line->deleteWanted, *line, [this, name = row.appName] { remove(name); });
    list_->addWidget(line);
    rows_.push_back(line);
}

QWidget* OrganizationPage::emptyList() {
    const bool isSearched = !view_.appPreferences().empty();
    auto* const empty =
        isSearched ? new EmptyState(QStringLiteral("search"), qt(localization_.text("ui_no_matching_app")),
                                    qt(localization_.text("ui_no_matching_app_help")))
                   : new EmptyState(QStringLiteral("app-check"), qt(localization_.text("no_app_preferences_title")),
                                    qt(localization_.text("no_app_preferences_help")));
    if (!isSearched) empty->addButton(makeAddButton());
    empty->setMinimumHeight(emptyHeight);
    return empty;
}

void OrganizationPage::remove(const std::string& appName) {
    const auto shown = view_.rows();
    const auto at = std::ranges::find(shown, appName, &AppCategoryManagementView::Row::appName) - shown.begin();
    view_.remove(std::string(appName));  // the row that lent it goes
    // The focus stays in the list: the next row, or the last one, takes it.
    if (rows_.empty()) return search_->setFocus(Qt::TabFocusReason);
    rows_[std::min(static_cast<std::size_t>(at), rows_.size() - 1)]->focusDelete();
}

void OrganizationPage::openForm(bool isNew) {
    AppPreferenceSheet::open(*window(), view_, localization_, isNew);
}

}  // namespace quorvane
