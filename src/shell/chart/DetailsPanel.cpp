#include "shell/chart/DetailsPanel.h"

#include "base/TimeText.h"
#include "shell/chart/AppIcon.h"
#include "shell/chart/AppTile.h"
#include "shell/chart/CategoryLine.h"
#include "shell/chart/DetailsRow.h"
#include "shell/look/Card.h"
#include "shell/look/Controls.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/signals/Subscribe.h"
#include "store/StoredNames.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>
#include <optional>
#include <utility>

namespace quorvane {
namespace {

constexpr int padding = Metrics::cardPadding - 1;  // the edge of 1 lies inside the card

/// The chosen block as it was processed last: it may have grown or have another category since it was chosen.
std::optional<ProcessedActivityItem> chosenItem(const DayTimelineChart& chart) {
    const auto& chosen = chart.selectedActivity();
    if (!chosen) return std::nullopt;
    const auto& items = chart.processedRecords();
    const auto present = std::ranges::find(items, chosen->id, &ProcessedActivityItem::id);
    return present == items.end() ? *chosen : *present;
}

Label* selectable(TypeRole role, QColor Theme::*color) {
    auto* const label = new Label({}, role, color);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

}  // namespace

struct DetailsPanel::Parts {
    Parts(DetailsPanel& owner, DayTimelineChart& shownChart, const platform::ApplicationIcons& appIcons,
          const Localization& texts);

    QLayout* head();
    Well* times();
    QLayout* foot();
    void refresh();

    DetailsPanel& panel;
    DayTimelineChart& chart;
    const platform::ApplicationIcons& icons;
    const Localization& localization;
    std::optional<ProcessedActivityItem> shown;
    AppTile* tile = new AppTile;
    Label* name = new Label({}, TypeRole::head, &Theme::text);
    Label* title = new Label({}, TypeRole::body, &Theme::text2);
    Label* range = selectable(TypeRole::head, &Theme::text);
    Label* duration = selectable(TypeRole::body, &Theme::text2);
    DetailsRow* window;
    DetailsRow* document;
    DetailsRow* webPage;
    CategoryLine* category;
};

DetailsPanel::Parts::Parts(DetailsPanel& owner, DayTimelineChart& shownChart,
                           const platform::ApplicationIcons& appIcons, const Localization& texts)
    : panel(owner), chart(shownChart), icons(appIcons), localization(texts), category(new CategoryLine(texts)) {
    const auto row = [this](const char* icon, TextKey caption) {
        return new DetailsRow(QString::fromLatin1(icon), qt(localization.text(caption)),
                              qt(localization.text("ui_copy")));
    };
    window = row("window", "ui_window");
    document = row("file", "ui_document");
    webPage = row("globe", "ui_web_page");

    auto* const page = new QVBoxLayout(&panel);
    page->setContentsMargins(1, 1, 1, 1);
    page->setSpacing(0);
    auto* const body = new QVBoxLayout;
    body->setContentsMargins(padding, 12, padding, 12);
    body->setSpacing(12);
    page->addLayout(body);
    body->addLayout(head());
    body->addWidget(times());
    for (QWidget* const part : {static_cast<QWidget*>(window), static_cast<QWidget*>(document),
                                static_cast<QWidget*>(webPage), static_cast<QWidget*>(category)})
        body->addWidget(part);
    page->addWidget(new Separator);
    page->addLayout(foot());

    subscribe(category->editWanted, panel, [this] {
        if (shown) panel.categoryWanted.send(*shown);
    });
    subscribe(chart.changed, panel, [this] { refresh(); });
    refresh();
}

QLayout* DetailsPanel::Parts::head() {
    auto* const layout = new QHBoxLayout;
    layout->setSpacing(10);
    layout->addWidget(tile, 0, Qt::AlignTop);
    auto* const words = new QVBoxLayout;
    words->setSpacing(0);
    name->setElided(true);
    title->setElided(true);
    words->addWidget(name);
    words->addWidget(title);
    layout->addLayout(words, 1);
    auto* const close = iconButton(QStringLiteral("close"), qt(localization.text("close")), "ghost small");
    connect(close, &QAbstractButton::clicked, &panel, [this] { panel.closeWanted.send(); });
    layout->addWidget(close, 0, Qt::AlignTop);
    return layout;
}

Well* DetailsPanel::Parts::times() {
    auto* const well = new Well;
    auto* const layout = new QHBoxLayout(well);
    layout->setContentsMargins(12, 8, 12, 8);
    layout->addWidget(range, 1);
    layout->addWidget(duration);
    return well;
}

QLayout* DetailsPanel::Parts::foot() {
    auto* const layout = new QHBoxLayout;
    layout->setContentsMargins(padding, 12, padding, 12);
    layout->setSpacing(8);
    auto* const assign = pushButton(qt(localization.text("timeline_assign_project")), "primary");
    assign->setIcon(icon(QStringLiteral("folder")));
    assign->setToolTip(qt(localization.text("timeline_assign_project_help")));
    connect(assign, &QAbstractButton::clicked, &panel, [this] { chart.selectTimeRangeOfActivity(); });
    auto* const remove =
        iconButton(QStringLiteral("trash"), qt(localization.text("delete_activity_record_help")), "danger");
    connect(remove, &QAbstractButton::clicked, &panel, [this] {
        if (const auto item = shown) chart.deleteActivity(*item);  // the chart lets go of it meanwhile
    });
    layout->addWidget(assign, 1);
    layout->addWidget(remove);
    return layout;
}

void DetailsPanel::Parts::refresh() {
    auto present = chosenItem(chart);
    if (shown == present) return;
    shown = std::move(present);
    const auto& item = shown;
    if (!item) return;  // hidden now; what it says last is left standing
    const QString windowTitle = qt(item->windowTitle.value_or(""));
    const QString appName = qt(StoredNames::shownApp(item->appName, localization));
    tile->setApp(appIcon(*item, icons), item->color, appName);
    name->setText(appName);
    title->setText(windowTitle);
    title->setVisible(!windowTitle.isEmpty());
    range->setText(isolated(qt(clockText(item->startHour * 1h) + " – " + clockText(item->endHour * 1h))));
    duration->setText(isolated(qt(lengthText(item->duration * 1h))));
    window->setText(windowTitle);
    document->setText(qt(item->documentPath.value_or("")));
    webPage->setText(qt(item->url.value_or("")));
    category->setChoice(item->category, item->tags);
}

DetailsPanel::DetailsPanel(DayTimelineChart& chart, const platform::ApplicationIcons& icons,
                           const Localization& localization, QWidget* parent)
    : Card(parent), parts_(std::make_unique<Parts>(*this, chart, icons, localization)) {}

DetailsPanel::~DetailsPanel() = default;

void DetailsPanel::showMarkingSuccess() {
    parts_->category->showMarkingSuccess();
}

}  // namespace quorvane
