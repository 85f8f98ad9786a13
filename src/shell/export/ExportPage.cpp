#include "shell/export/ExportPage.h"

#include "shell/export/ExportFoot.h"
#include "shell/export/InstantField.h"
#include "shell/export/ProjectSelection.h"
#include "shell/look/Alert.h"
#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/SaveDialog.h"
#include "shell/look/Theme.h"
#include "shell/signals/Subscribe.h"

#include <QBoxLayout>
#include <QScrollArea>

namespace quorvane {
namespace {

constexpr int topMargin = 18;
constexpr int leastWidthForLine = 760;

QLayout* heading(const Localization& localization) {
    auto* const words = new QVBoxLayout;
    words->setSpacing(1);
    auto* const title = new Label(qt(localization.text("export_title")), TypeRole::title, &Theme::text);
    title->setWordWrap(true);
    auto* const subtitle = new Label(qt(localization.text("export_subtitle")), TypeRole::body, &Theme::text2);
    subtitle->setWordWrap(true);
    words->addWidget(title);
    words->addWidget(subtitle);
    words->setContentsMargins(0, 0, 0, -2);
    return words;
}

}  // namespace

struct ExportPage::Parts {
    Parts(ExportPage& owner, AppServices& services);

    [[nodiscard]] QWidget* makeRange();
    void refresh();
    void countRecords() { foot->setRecordCount(state.recordCount()); }
    void tellDone();

    ExportPage& page;
    const Localization& localization;
    ExportState state;
    InstantField* start;
    InstantField* end;
    IconView* arrow;
    QBoxLayout* range;
    ProjectSelection* projects;
    ExportFoot* foot;
    std::optional<std::filesystem::path> lastFile;  ///< of which the user has been told
};

ExportPage::Parts::Parts(ExportPage& owner, AppServices& services)
    : page(owner), localization(services.localization),
      state(services.container, services.runLoop, services.localization, services.console),
      start(new InstantField(localization.text("start_time"), localization)),
      end(new InstantField(localization.text("end_time"), localization)),
      arrow(new IconView(QStringLiteral("right"), 16, &Theme::text2)), range(new QHBoxLayout),
      projects(new ProjectSelection(state, localization)), foot(new ExportFoot(localization)) {
    auto* const scroll = new QScrollArea;
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* const content = new QWidget;
    content->setObjectName(QStringLiteral("scrolled"));
    auto* const column = new QVBoxLayout(content);
    column->setContentsMargins(Metrics::pageMargin, topMargin, Metrics::pageMargin, Metrics::pageMargin);
    column->setSpacing(Metrics::cardGap);
    column->addLayout(heading(localization));
    column->addWidget(makeRange());
    column->addWidget(projects);
    column->addWidget(foot);
    column->addStretch(1);
    scroll->setWidget(content);
    auto* const whole = new QVBoxLayout(&page);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(scroll);

    subscribe(start->chosen, owner, [this](Date chosen) {
        state.startDate = chosen;
        countRecords();
    });
    subscribe(end->chosen, owner, [this](Date chosen) {
        state.endDate = chosen;
        countRecords();
    });
    subscribe(projects->changed, owner, [this] { countRecords(); });
    subscribe(foot->pressed, owner, [this] { page.exportRecords(); });
    subscribe(state.progressed, owner, [this](std::size_t written) { foot->setProgress(written); });
    subscribe(state.finished, owner, [this] {
        foot->setWriting(false);
        tellDone();
    });
}

QWidget* ExportPage::Parts::makeRange() {
    auto* const card = new Card;
    auto* const column = new QVBoxLayout(card);
    column->setContentsMargins(Metrics::cardPadding, Metrics::cardPadding, Metrics::cardPadding, Metrics::cardPadding);
    column->setSpacing(12);
    column->addWidget(new Label(qt(localization.text("time_range")), TypeRole::head, &Theme::text));
    range->setSpacing(Metrics::cardGap);
    range->addWidget(start, 1);
    arrow->setContentsMargins(0, 0, 0, 0);
    auto* const middle = new QVBoxLayout;  // between the fields, below the height of their labels
    middle->addStretch(1);
    middle->addWidget(arrow);
    middle->addSpacing((Metrics::controlHeight - arrow->sizeHint().height()) / 2);
    range->addLayout(middle);
    range->addWidget(end, 1);
    column->addLayout(range);
    return card;
}

void ExportPage::Parts::refresh() {
    start->setInstant(state.startDate);
    end->setInstant(state.endDate);
    projects->refresh();
    countRecords();
}

/// A failure is printed and no more.
void ExportPage::Parts::tellDone() {
    if (!state.exportURL()) return;
    if (lastFile == state.exportURL()) return;
    lastFile = state.exportURL();
    Toast::show(*page.window(), qt(localization.text("done")), isolated(qt(lastFile->filename().string())));
}

ExportPage::ExportPage(AppServices& services, QWidget* parent)
    : QWidget(parent), parts_(std::make_unique<Parts>(*this, services)) {}

ExportPage::~ExportPage() = default;

void ExportPage::exportRecords() {
    auto& state = parts_->state;
    if (state.isExporting()) return;
    parts_->countRecords();
    state.beginExport();
    const SaveDialog::Content content{.title = qt(parts_->localization.text("export_csv")),
                                      .fileName = qt(state.defaultFileName()),
                                      .mimeType = QStringLiteral("text/csv")};
    SaveDialog::open(
        *this, content,
        [this](const std::filesystem::path& file) {
            parts_->foot->setWriting(true);
            parts_->state.save(file);
        },
        [this] { parts_->state.cancelExport(); });
}

bool ExportPage::isExporting() const {
    return parts_->state.isExporting();
}

void ExportPage::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    parts_->refresh();
}

void ExportPage::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const bool isLine = width() >= leastWidthForLine;
    parts_->range->setDirection(isLine ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    parts_->arrow->setVisible(isLine);
}

}  // namespace quorvane
