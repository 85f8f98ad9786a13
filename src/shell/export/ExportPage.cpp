#include "shell/export/ExportPage.h"

#include "shell/export/ExportFoot.h"
#include "shell/export/InstantField.h"
#include "shell/export/ProjectSelection.h"
#include "shell/look/Alert.h"
#include "shell/look/Boxes.h"
#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/SaveDialog.h"
#include "shell/look/Theme.h"
#include "shell/signals/Subscribe.h"

#include <QScrollArea>

namespace quorvane {
namespace {

constexpr int topMargin = 18;
constexpr int leastWidthForLine = 760;

QLayout* heading(const Localization& localization) {
    auto* const words = columnBox(1);
    words->setContentsMargins(0, 0, 0, -2);
    for (auto* const line : {new Label(qt(localization.text("export_title")), TypeRole::title, &Theme::text),
                             new Label(qt(localization.text("export_subtitle")), TypeRole::body, &Theme::text2)}) {
        line->setWordWrap(true);
        words->addWidget(line);
    }
    return words;
}

}  // namespace

struct ExportPageParts {
    explicit ExportPageParts(AppServices& services)
        : localization(services.localization),
          state(services.container, services.runLoop, services.localization, services.console),
          start(new InstantField(localization.text("start_time"), localization)),
          end(new InstantField(localization.text("end_time"), localization)),
          arrow(new IconView(QStringLiteral("right"), 16, &Theme::text2)), range(lineBox(Metrics::cardGap)),
          projects(new ProjectSelection(state, localization)), foot(new ExportFoot(localization)) {}

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

ExportPage::ExportPage(AppServices& services, QWidget* parent)
    : Keeps(std::make_unique<ExportPageParts>(services)), QWidget(parent) {
    build();
    follow();
}

ExportPage::~ExportPage() = default;

void ExportPage::build() {
    auto* const scroll = new QScrollArea;
    scroll->setWidgetResizable(true);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* const content = new QWidget;
    content->setObjectName(QStringLiteral("scrolled"));
    auto* const column = columnBox(Metrics::cardGap, content);
    column->setContentsMargins(Metrics::pageMargin, topMargin, Metrics::pageMargin, Metrics::pageMargin);
    column->addLayout(heading(parts_->localization));
    column->addWidget(makeRange());
    column->addWidget(parts_->projects);
    column->addWidget(parts_->foot);
    column->addStretch(1);
    scroll->setWidget(content);
    columnBox(0, this)->addWidget(scroll);
}

QWidget* ExportPage::makeRange() {
    auto* const card = new Card;
    auto* const column = columnBox(12, card);
    column->setContentsMargins(Metrics::cardPadding, Metrics::cardPadding, Metrics::cardPadding, Metrics::cardPadding);
    column->addWidget(new Label(qt(parts_->localization.text("time_range")), TypeRole::head, &Theme::text));
    parts_->arrow->setFixedHeight(Metrics::controlHeight);  // between the fields, below the height of their labels
    parts_->range->addWidget(parts_->start, 1);
    parts_->range->addWidget(parts_->arrow, 0, Qt::AlignBottom);
    parts_->range->addWidget(parts_->end, 1);
    column->addLayout(parts_->range);
    return card;
}

void ExportPage::follow() {
    auto& state = parts_->state;
    subscribe(parts_->start->chosen, *this, [this, &state](Date chosen) {
        state.startDate = chosen;
        countRecords();
    });
    subscribe(parts_->end->chosen, *this, [this, &state](Date chosen) {
        state.endDate = chosen;
        countRecords();
    });
    subscribe(parts_->projects->changed, *this, [this] { countRecords(); });
    subscribe(parts_->foot->pressed, *this, [this] { exportRecords(); });
    subscribe(state.progressed, *this, [this](std::size_t written) { parts_->foot->setProgress(written); });
    subscribe(state.finished, *this, [this] {
        parts_->foot->setWriting(false);
        tellDone();
    });
}

void ExportPage::countRecords() {
    parts_->foot->setRecordCount(parts_->state.recordCount());
}

/// A failure is printed and no more.
void ExportPage::tellDone() {
    const auto& written = parts_->state.exportURL();
    if (!written || parts_->lastFile == written) return;
    parts_->lastFile = written;
    Toast::show(*window(), qt(parts_->localization.text("done")), isolated(qt(written->filename().string())));
}

void ExportPage::exportRecords() {
    auto& state = parts_->state;
    if (state.isExporting()) return;
    countRecords();
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
    parts_->start->setInstant(parts_->state.startDate);
    parts_->end->setInstant(parts_->state.endDate);
    parts_->projects->refresh();
    countRecords();
}

void ExportPage::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const bool isLine = width() >= leastWidthForLine;
    parts_->range->setDirection(isLine ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    parts_->arrow->setVisible(isLine);
}

}  // namespace quorvane
