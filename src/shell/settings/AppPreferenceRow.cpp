#include "shell/settings/AppPreferenceRow.h"

#include "base/Text.h"
#include "shell/look/AccessibleRole.h"
#include "shell/look/Chip.h"
#include "shell/look/Controls.h"
#include "shell/look/FlowLayout.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "store/StoredNames.h"
#include "timeline/AppColorPalette.h"

#include <QHBoxLayout>
#include <QPainter>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quorvane {
namespace {

constexpr int rowHeight = 46;
constexpr int tileSide = 24;
constexpr int gap = 12;
constexpr int nameShare = 170;
constexpr int categoryShare = 110;
constexpr int tagsShare = 262;

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

std::string categoryOf(const AppCategoryManagementView::Row& row, const Localization& localization) {
    return row.category ? StoredNames::shownCategory(*row.category, localization) : localization.text("uncategorized");
}

QWidget* categoryCell(const AppCategoryManagementView::Row& row, const Localization& localization) {
    auto* const cell = new QWidget;
    auto* const line = new QHBoxLayout(cell);
    line->setContentsMargins(0, 0, 0, 0);
    if (row.category) {
        line->addWidget(new Chip(qt(categoryOf(row, localization)), Chip::Tone::info));
        line->addStretch(1);
    } else {
        auto* const none = new Label(qt(categoryOf(row, localization)), TypeRole::body, &Theme::text2);
        none->setElided(true);
        line->addWidget(none);
    }
    return cell;
}

QWidget* tagsCell(const std::vector<std::string>& tags, const Localization& localization) {
    auto* const cell = new QWidget;
    auto* const flow = new FlowLayout(6, cell);
    flow->setContentsMargins(0, 0, 0, 0);
    for (const std::string& tag : tags)
        flow->addWidget(new Chip(qt(StoredNames::shownTag(tag, localization))));
    return cell;
}

/// What the row says as a whole.
QString spoken(const AppCategoryManagementView::Row& row, const Localization& localization) {
    std::vector<std::string> parts{row.appName, categoryOf(row, localization)};
    for (const std::string& tag : row.tags)
        parts.push_back(StoredNames::shownTag(tag, localization));
    return qt(text::joined(parts, ", "));
}

}  // namespace

AppPreferenceRow::AppPreferenceRow(const AppCategoryManagementView::Row& row, const Localization& localization,
                                   QWidget* parent)
    : QWidget(parent),
      delete_(iconButton(QStringLiteral("trash"), qt(localization.text("delete") + " " + row.appName), "ghost small")) {
    setAccessibleRole(*this, QAccessible::ListItem, spoken(row, localization));
    setMinimumHeight(rowHeight - 1);
    auto* const edit =
        iconButton(QStringLiteral("pencil"), qt(localization.text("a11y_edit", row.appName)), "ghost small");
    auto* const name = new Label(isolated(qt(row.appName)), TypeRole::bodyStrong, &Theme::text);
    name->setElided(true);
    auto* const line = new QHBoxLayout(this);
    line->setContentsMargins(0, 4, 0, 4);
    line->setSpacing(gap);
    line->addWidget(new Tile(row.appName));
    line->addWidget(name, nameShare);
    line->addWidget(categoryCell(row, localization), categoryShare);
    line->addWidget(tagsCell(row.tags, localization), tagsShare, Qt::AlignVCenter);
    line->addWidget(edit);
    line->addWidget(delete_);
    connect(edit, &QAbstractButton::clicked, this, [this] { editWanted.send(); });
    connect(delete_, &QAbstractButton::clicked, this, [this] { deleteWanted.send(); });
}

void AppPreferenceRow::focusDelete() {
    delete_->setFocus(Qt::TabFocusReason);
}

}  // namespace quorvane
