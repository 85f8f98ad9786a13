#include "shell/settings/OrganizationPage.h"

#include "base/Text.h"
#include "shell/look/AccessibleRole.h"
#include "shell/look/Boxes.h"
#include "shell/look/Card.h"
#include "shell/look/Controls.h"
#include "shell/look/EmptyState.h"
#include "shell/look/FlowLayout.h"
#include "shell/look/Labelled.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/settings/AppPreferenceSheet.h"
#include "shell/signals/Subscribe.h"
#include "store/StoredNames.h"
#include "timeline/AppColorPalette.h"

#include <QLineEdit>
#include <QPainter>
#include <algorithm>
#include <memory>

namespace quorvane {
namespace {

constexpr int emptyHeight = 232;
constexpr int rowHeight = 46;
constexpr int tileSide = 24;
constexpr int rowGap = 12;
constexpr int pillHeight = 28;
// How a row's width is shared.
constexpr int nameShare = 170;
constexpr int categoryShare = 110;
constexpr int tagsShare = 262;

using AppRow = AppCategoryManagementView::Row;

/// The application's tile, which only repeats its name.
class Tile : public QWidget {
public:
    explicit Tile(std::string appName) : appName_(std::move(appName)) { setFixedSize(tileSide, tileSide); }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        const Color color = AppColorPalette::appColor(std::nullopt, appName_);
        paintAppTile(painter, rect(), toQColor(color), qt(appName_));
    }

private:
    std::string appName_;
};

QWidget* chips(const std::vector<std::string>& names, Tone tone, auto shown, const Localization& localization) {
    auto* const cell = new QWidget;
    auto* const flow = new FlowLayout(6, cell);
    flow->setContentsMargins(0, 0, 0, 0);
    for (const std::string& name : names)
        flow->addWidget(new Chip(qt(shown(name, localization)), tone));
    return cell;
}

/// What the row says as a whole.
QString spoken(const AppRow& row, const Localization& localization) {
    std::vector<std::string> parts{row.appName};
    parts.push_back(row.category ? StoredNames::shownCategory(*row.category, localization)
                                 : localization.text("uncategorized"));
    for (const std::string& tag : row.tags)
        parts.push_back(StoredNames::shownTag(tag, localization));
    return qt(text::joined(parts, ", "));
}

/// Takes out what is there; its button may be what was pressed.
void clear(QLayout& layout) {
    while (const std::unique_ptr<QLayoutItem> item{layout.takeAt(0)}) {
        item->widget()->hide();
        item->widget()->deleteLater();
    }
}

}  // namespace

OrganizationPage::OrganizationPage(AppCategoryManagementView& view, const Localization& localization)
    : SettingsPage(localization), view_(view) {
    addApplications();
    addOwnCategories();
    subscribe(view_.changed, *this, [this] {
        showApplications();
        showCategories();
    });
    showApplications();
    showCategories();
}

void OrganizationPage::addApplications() {
    auto* const area = new QWidget;
    auto* const column = columnBox(8, area);
    auto* const head = new Label(text("app_category_section_title"), TypeRole::label, &Theme::text2);
    head->setContentsMargins(2, 0, 2, 0);
    auto* const card = new Card;
    setAccessibleRole(*card, QAccessible::List, head->text());
    list_ = columnBox(0, card);
    list_->setContentsMargins(17, 1, 13, 1);
    column->addWidget(head);
    column->addLayout(searchLine());
    column->addWidget(card);
    add(area);
}

QLayout* OrganizationPage::searchLine() {
    search_ = searchField(text("search_app_placeholder"));
    search_->setText(qt(view_.searchText));
    connect(search_, &QLineEdit::textChanged, this, [this](const QString& wanted) {
        view_.searchText = wanted.toStdString();
        showApplications();
    });
    auto* const line = lineBox(8);
    line->addWidget(search_, 1);
    line->addWidget(addButton());
    return line;
}

QPushButton* OrganizationPage::addButton() {
    auto* const button = pushButton(text("add_app_button"));
    button->setIcon(icon(QStringLiteral("plus")));
    connect(button, &QAbstractButton::clicked, this, [this] {
        view_.beginAdding();
        openForm(true);
    });
    return button;
}

void OrganizationPage::showApplications() {
    clear(*list_);
    deleteButtons_.clear();
    for (const AppRow& shown : view_.rows()) {
        if (!deleteButtons_.empty()) list_->addWidget(new Separator);
        list_->addWidget(row(shown));
    }
    if (deleteButtons_.empty()) list_->addWidget(emptyList());
}

QWidget* OrganizationPage::row(const AppRow& row) {
    auto* const whole = new QWidget;
    setAccessibleRole(*whole, QAccessible::ListItem, spoken(row, localization()));
    whole->setMinimumHeight(rowHeight - 1);
    auto* const name = new Label(isolated(qt(row.appName)), TypeRole::bodyStrong, &Theme::text);
    name->setElided(true);
    auto* const edit =
        iconButton(QStringLiteral("pencil"), qt(localization().text("a11y_edit", row.appName)), "ghost small");
    auto* const remove =
        iconButton(QStringLiteral("trash"), text("delete") + QLatin1Char(' ') + qt(row.appName), "ghost small");
    deleteButtons_.push_back(remove);
    connect(edit, &QAbstractButton::clicked, this, [this, appName = row.appName] {
        view_.beginEditing(appName);
        openForm(false);
    });
    connect(remove, &QAbstractButton::clicked, this, [this, appName = row.appName] { this->remove(appName); });
    QWidget* category = nullptr;
    if (row.category) {
        category = chips({*row.category}, Tone::info, StoredNames::shownCategory, localization());
    } else {
        auto* const none = new Label(text("uncategorized"), TypeRole::body, &Theme::text2);
        none->setElided(true);
        category = none;
    }
    auto* const line = lineBox(rowGap, whole);
    line->setContentsMargins(0, 4, 0, 4);
    line->addWidget(new Tile(row.appName));
    line->addWidget(name, nameShare);
    line->addWidget(category, categoryShare, Qt::AlignVCenter);
    line->addWidget(chips(row.tags, Tone::neutral, StoredNames::shownTag, localization()), tagsShare, Qt::AlignVCenter);
    line->addWidget(edit);
    line->addWidget(remove);
    return whole;
}

QWidget* OrganizationPage::emptyList() {
    const bool isSearched = !view_.appPreferences().empty();
    auto* const empty = isSearched ? new EmptyState(QStringLiteral("search"), text("ui_no_matching_app"),
                                                    text("ui_no_matching_app_help"))
                                   : new EmptyState(QStringLiteral("app-check"), text("no_app_preferences_title"),
                                                    text("no_app_preferences_help"));
    if (!isSearched) empty->addButton(addButton());
    empty->setMinimumHeight(emptyHeight);
    return empty;
}

void OrganizationPage::remove(const std::string& appName) {
    const auto shown = view_.rows();
    const auto at = static_cast<std::size_t>(std::ranges::find(shown, appName, &AppRow::appName) - shown.begin());
    view_.remove(std::string(appName));  // the row that lent it goes
    // The focus stays in the list: the next row, or the last one, takes it.
    if (deleteButtons_.empty()) return search_->setFocus(Qt::TabFocusReason);
    deleteButtons_[std::min(at, deleteButtons_.size() - 1)]->setFocus(Qt::TabFocusReason);
}

void OrganizationPage::openForm(bool isNew) {
    AppPreferenceSheet::open(*window(), view_, localization(), isNew);
}

void OrganizationPage::addOwnCategories() {
    auto* const content = new QWidget;
    auto* const lines = columnBox(10, content);
    noCategories_ = new Label(text("category_management_empty"), TypeRole::body, &Theme::text2);
    pillsArea_ = new QWidget;
    pills_ = new FlowLayout(8, pillsArea_);
    pills_->setContentsMargins(0, 0, 0, 0);
    lines->addWidget(noCategories_);
    lines->addWidget(pillsArea_);
    lines->addLayout(categoryLine());
    addSection("category_management_title").addRow(content);
}

QLayout* OrganizationPage::categoryLine() {
    newCategory_ = new QLineEdit;
    newCategory_->setPlaceholderText(text("category_management_placeholder"));
    newCategory_->setAccessibleName(newCategory_->placeholderText());
    auto* const plus = iconButton(QStringLiteral("plus"), text("ui_add_category"), "plain");
    connect(newCategory_, &QLineEdit::returnPressed, this, [this] { enterCategory(); });
    connect(plus, &QAbstractButton::clicked, this, [this] { enterCategory(); });
    auto* const line = lineBox(8);
    line->addWidget(newCategory_, 1);
    line->addWidget(plus);
    return line;
}

void OrganizationPage::enterCategory() {
    view_.newCategoryName = newCategory_->text().toStdString();
    view_.addCategory();
    newCategory_->clear();
}

void OrganizationPage::showCategories() {
    clear(*pills_);
    const auto& categories = view_.customCategories();
    for (const std::string& category : categories) {
        auto* const shown = pill(category);
        pills_->addWidget(shown);
        shown->show();
    }
    noCategories_->setVisible(categories.empty());
    pillsArea_->setVisible(!categories.empty());
    pillsArea_->updateGeometry();
}

QWidget* OrganizationPage::pill(const std::string& category) {
    auto* const remove =
        iconButton(QStringLiteral("close"), qt(localization().text("a11y_remove", category)), "ghost small");
    connect(remove, &QAbstractButton::clicked, this, [this, category] {
        view_.removeCategory(std::string(category));  // the button that lent it goes
        newCategory_->setFocus(Qt::TabFocusReason);
    });
    auto* const whole = kind("chip", new QFrame);
    whole->setFixedHeight(pillHeight);
    auto* const line = lineBox(0, whole);
    line->setContentsMargins(10, 0, 0, 0);
    line->addWidget(new Label(isolated(qt(category)), TypeRole::label, &Theme::text));
    line->addWidget(remove);
    return whole;
}

}  // namespace quorvane
