#include "shell/billing/BillingPage.h"

#include "shell/billing/BillingActions.h"
#include "shell/billing/BillingFilterBar.h"
#include "shell/billing/BillingTable.h"
#include "shell/billing/FigureCard.h"
#include "shell/look/Alert.h"
#include "shell/look/Boxes.h"
#include "shell/look/Controls.h"
#include "shell/look/EmptyState.h"
#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/SaveDialog.h"
#include "shell/look/Theme.h"
#include "shell/signals/Subscribe.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QTableView>
#include <fmt/format.h>
#include <utility>

namespace quorvane {
namespace {

constexpr int headTop = 20;
constexpr int headHeight = 32;
constexpr int closeGap = 12;  ///< between a section and what belongs to it
constexpr int emptyHeight = 232;
constexpr int rowMargin = 60;  ///< kept around the row that the keys have reached
constexpr int stackedBelow = 560;
constexpr int chevronRoom = 24;

}  // namespace

struct BillingPageParts {
    BillingPage::Services services;
    BillingPage::Options options;
    std::unique_ptr<BillingDashboardView> dashboard;
    QScrollArea* area = nullptr;
    Label* scope = nullptr;
    BillingFilterBar* filters = nullptr;
    std::array<FigureCard*, 3> steps{};
    std::array<FigureCard*, 3> metrics{};
    std::vector<QBoxLayout*> cardRows;
    std::vector<QWidget*> chevrons;
    Well* review = nullptr;
    IconView* reviewIcon = nullptr;
    Label* reviewCount = nullptr;
    BillingTable* table = nullptr;
    Card* empty = nullptr;
    BillingActions* actions = nullptr;

    [[nodiscard]] const Localization& texts() const { return services.localization; }
};

BillingPage::BillingPage(const Services& services, Options options, QWidget* parent)
    : Keeps(std::make_unique<BillingPageParts>(BillingPageParts{.services = services, .options = std::move(options)})),
      QWidget(parent) {
    parts_->dashboard = std::make_unique<BillingDashboardView>(services.store, services.runLoop, services.localization,
                                                               services.console, presenter());
    build();
    follow();
    addShortcuts();
}

BillingPage::~BillingPage() = default;

BillingDashboardView& BillingPage::dashboard() {
    return *parts_->dashboard;
}

BillingDashboardView::Presenter BillingPage::presenter() {
    return {.copyText = [](const std::string& text) { QGuiApplication::clipboard()->setText(qt(text)); },
            .showCopyConfirmation =
                [this](const std::string& title, const std::string& message) {
                    Alert::show(*window(), {.title = qt(title),
                                            .text = qt(message),
                                            .iconName = QStringLiteral("check-circle"),
                                            .choices = {{.text = qt(parts_->texts().text("done")), .act = {}}}});
                },
            .showBillingPreview = parts_->options.openPreview,
            .showReportExporter = [this](const BillingMarkdownDocument& document,
                                         const std::string& fileName) { chooseFile(document, fileName); },
            .showExportReviewWarning = [this](std::size_t count) { warnBeforeExport(count); },
            .showReviewQueue = parts_->options.openReviewQueue,
            .editProject = parts_->options.openProjectEditor};
}

// ---- Parts

void BillingPage::build() {
    parts_->area = new QScrollArea(this);
    parts_->area->setWidgetResizable(true);
    parts_->area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    parts_->area->setFocusPolicy(Qt::NoFocus);
    auto* const content = new QWidget;
    content->setObjectName(QStringLiteral("scrolled"));
    auto* const column = columnBox(0, content);
    column->setContentsMargins(Metrics::pageMargin, headTop, Metrics::pageMargin, Metrics::pageMargin);
    addHead(*column);
    addFigures(*column);
    addTable(*column);
    column->addStretch(1);
    parts_->area->setWidget(content);
    connect(parts_->area->verticalScrollBar(), &QScrollBar::rangeChanged, this, [this] { keepMargins(); });
    columnBox(0, this)->addWidget(parts_->area);
}

/// The scroll bar stands in the margin and takes no width from what it scrolls.
void BillingPage::keepMargins() {
    const auto* const bar = parts_->area->verticalScrollBar();
    const int beside = bar->maximum() > 0 ? bar->sizeHint().width() : 0;
    QMargins margins(Metrics::pageMargin, headTop, Metrics::pageMargin - beside, Metrics::pageMargin);
    if (layoutDirection() == Qt::RightToLeft) margins = {margins.right(), headTop, margins.left(), margins.bottom()};
    parts_->area->widget()->layout()->setContentsMargins(margins);
}

void BillingPage::addHead(QVBoxLayout& column) {
    auto* const title = new Label(qt(parts_->texts().text("nav_billing")), TypeRole::title, &Theme::text);
    title->setMinimumHeight(headHeight);
    parts_->scope = new Label({}, TypeRole::body, &Theme::text2);
    parts_->scope->setElided(true);
    parts_->scope->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* const line = lineBox(Metrics::cardGap);
    line->addWidget(title);
    line->addWidget(parts_->scope, 1);
    column.addLayout(line);
    column.addSpacing(Metrics::cardGap);
    parts_->filters = new BillingFilterBar(dashboard(), parts_->texts());
    column.addWidget(parts_->filters);
    column.addSpacing(Metrics::cardGap);
}

void BillingPage::addFigures(QVBoxLayout& column) {
    for (FigureCard*& card : parts_->steps)
        card = new FigureCard(TypeRole::title);
    for (FigureCard*& card : parts_->metrics)
        card = new FigureCard(TypeRole::display);
    column.addLayout(cardRow(parts_->steps, true));
    column.addSpacing(closeGap);
    column.addWidget(reviewBar());
    column.addSpacing(Metrics::cardGap);
    column.addLayout(cardRow(parts_->metrics, false));
    column.addSpacing(Metrics::cardGap);
}

/// Side by side; one under another where the page is narrow.
QBoxLayout* BillingPage::cardRow(const std::array<FigureCard*, 3>& cards, bool hasChevrons) {
    auto* const row = lineBox(hasChevrons ? 0 : Metrics::cardGap);
    for (FigureCard* const card : cards) {
        row->addWidget(card, 1);
        if (!hasChevrons || card == cards.back()) continue;
        auto* const chevron = new IconView(QStringLiteral("right"), 14, &Theme::text2);
        chevron->setFixedWidth(chevronRoom);
        row->addWidget(chevron);
        parts_->chevrons.push_back(chevron);
    }
    parts_->cardRows.push_back(row);
    return row;
}

/// How many records wait for a look, and the way to them.
QWidget* BillingPage::reviewBar() {
    parts_->review = new Well;
    parts_->reviewIcon = new IconView(QStringLiteral("seal"), 17, &Theme::ok);
    parts_->reviewCount = new Label({}, TypeRole::bodyStrong, &Theme::text);
    parts_->reviewCount->setElided(true);
    auto* const open = pushButton(qt(parts_->texts().text("review_queue_open")), "small");
    connect(open, &QAbstractButton::clicked, this, [this] { dashboard().openReviewQueue(); });
    auto* const line = lineBox(13, parts_->review);
    line->setContentsMargins(Metrics::cardPadding, 8, 8, 8);
    line->addWidget(parts_->reviewIcon);
    line->addWidget(parts_->reviewCount, 1);
    line->addWidget(open);
    return parts_->review;
}

void BillingPage::addTable(QVBoxLayout& column) {
    const auto& texts = parts_->texts();
    parts_->table = new BillingTable(texts);
    parts_->empty = new Card;
    columnBox(0, parts_->empty)
        ->addWidget(new EmptyState(QStringLiteral("clock-q"), qt(texts.text("billing_empty_title")),
                                   qt(texts.text("billing_empty_description"))));
    parts_->empty->setMinimumHeight(emptyHeight);
    parts_->actions = new BillingActions(dashboard(), texts);
    column.addWidget(parts_->table);
    column.addWidget(parts_->empty);
    column.addSpacing(closeGap);
    column.addWidget(parts_->actions);
}

void BillingPage::follow() {
    subscribe(dashboard().changed, *this, [this] {
        if (isVisible()) refresh();
    });
    subscribe(parts_->table->edited, *this, [this](const Uuid& project) { dashboard().editProject(project); });
    QTableView& rows = parts_->table->view();
    connect(rows.selectionModel(), &QItemSelectionModel::currentChanged, this, [this, &rows](const QModelIndex& row) {
        if (!rows.hasFocus()) return;
        const QPoint centre = rows.viewport()->mapTo(parts_->area->widget(), rows.visualRect(row).center());
        parts_->area->ensureVisible(0, centre.y(), 0, rowMargin);
    });
}

void BillingPage::addShortcuts() {
    const std::pair<Qt::Key, void (BillingDashboardView::*)()> keys[] = {
        {Qt::Key_R, &BillingDashboardView::openReviewQueue},
        {Qt::Key_P, &BillingDashboardView::previewPack},
        {Qt::Key_E, &BillingDashboardView::exportPack}};
    for (const auto& [key, act] : keys) {
        auto* const shortcut = new QShortcut(QKeySequence(Qt::CTRL | key), this);  // of a hidden page it rests
        connect(shortcut, &QShortcut::activated, this, [this, act = act] { (dashboard().*act)(); });
    }
}

// ---- Life

// Only on screen: a page that nobody has opened reads nothing.
void BillingPage::refresh() {
    auto& dashboard = *parts_->dashboard;
    parts_->scope->setText(qt(dashboard.scopeCaption()));
    parts_->filters->refresh();
    const auto& texts = parts_->texts();
    const auto steps = dashboard.checkoutSteps();
    const auto metrics = dashboard.metrics();
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const auto& [index, title, value, caption, image] = steps[i];
        parts_->steps[i]->setIcon(qt(image));
        parts_->steps[i]->setContent({qt(fmt::format("{} · {}", index, title)), qt(value), qt(caption),
                                      qt(texts.text("a11y_step_card", std::to_string(index), title, value, caption))});
        const auto& metric = metrics[i];
        parts_->metrics[i]->setContent(
            {qt(metric.title), qt(metric.value), qt(metric.caption),
             qt(texts.text("a11y_metric_card", metric.title, metric.value, metric.caption))});
    }
    const std::size_t open = dashboard.reviewCount();
    setKind(*parts_->review, open > 0 ? "well warn" : "well");
    parts_->reviewIcon->setIcon(open > 0 ? QStringLiteral("review-mag") : QStringLiteral("seal"),
                                open > 0 ? &Theme::warn : &Theme::ok);
    parts_->reviewCount->setText(qt(texts.text("review_queue_count_caption", static_cast<std::int64_t>(open))));
    parts_->table->setRows(dashboard.tableRows());
    parts_->table->setVisible(dashboard.canBill());
    parts_->empty->setVisible(!dashboard.canBill());
    parts_->actions->refresh();
}

void BillingPage::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    dashboard().appear();
    refresh();
}

void BillingPage::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    dashboard().disappear();
}

void BillingPage::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const bool isStacked = width() - 2 * Metrics::pageMargin < stackedBelow * typeScale();
    for (QBoxLayout* const row : parts_->cardRows)
        row->setDirection(isStacked ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    for (QWidget* const chevron : parts_->chevrons)
        chevron->setVisible(!isStacked);
    parts_->cardRows.front()->setSpacing(isStacked ? closeGap : 0);
}

void BillingPage::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), theme().canvas);
}

// ---- What it opens

void BillingPage::warnBeforeExport(std::size_t count) {
    const auto& texts = parts_->texts();
    const auto number = static_cast<std::int64_t>(count);
    Alert::show(*window(), {.title = qt(texts.text("billing_export_review_alert_title")),
                            .text = qt(texts.text("billing_export_review_alert_message", number)),
                            .iconName = QStringLiteral("warn-line"),
                            .choices = {{.text = qt(texts.text("review_queue_open")),
                                         .act = [this] { dashboard().openReviewQueue(); },
                                         .isPrimary = true},
                                        {.text = qt(texts.text("billing_export_continue")),
                                         .act = [this] { dashboard().continueExport(); },
                                         .isDestructive = true},
                                        {.text = qt(texts.text("cancel")), .act = {}}}});
}

void BillingPage::chooseFile(const BillingMarkdownDocument& document, const std::string& fileName) {
    auto save = [this, document](const std::filesystem::path& file) { dashboard().save(document, file); };
    if (parts_->options.chooseFile) return parts_->options.chooseFile(fileName, std::move(save));
    SaveDialog::open(*this,
                     {.title = qt(parts_->texts().text("billing_export_pack")),
                      .fileName = qt(fileName),
                      .mimeType = QStringLiteral("text/markdown")},
                     std::move(save));
}

}  // namespace quorvane
