#include "shell/window/RecordingCard.h"

#include "base/DateText.h"
#include "shell/app/RecordingColor.h"
#include "shell/look/Controls.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/signals/Subscribe.h"
#include "store/ActivityRecord.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>
#include <QVBoxLayout>
#include <utility>

namespace quorvane {
namespace {

constexpr QRect dotInCard(13, 20, 8, 8);
constexpr int railDot = 9;

}  // namespace

RecordingCard::RecordingCard(ActivityTracker& tracker, ModelContext& context, platform::RunLoop& runLoop,
                             const Localization& localization, QWidget* parent)
    : QWidget(parent), tracker_(tracker), runLoop_(runLoop), localization_(localization),
      state_(new Label({}, TypeRole::label, &Theme::text, this)),
      application_(new Label({}, TypeRole::caption, &Theme::text2, this)),
      since_(new Label({}, TypeRole::caption, &Theme::text2, this)), health_(new QWidget(this)),
      missing_(new Label({}, TypeRole::caption, &Theme::warn)),
      fix_(pushButton(qt(localization.text("health_fix")), "link")), toggle_(iconButton("pause", {}, "small", this)) {
    application_->setElided(true);
    auto* const column = new QVBoxLayout(this);
    column->setSpacing(1);
    auto* const head = new QHBoxLayout;
    head->addWidget(state_, 1);
    head->addWidget(toggle_);
    column->addLayout(head);
    column->addWidget(application_);
    column->addWidget(since_);
    auto* const line = new QHBoxLayout(health_);
    line->setContentsMargins(0, 4, 0, 0);
    line->addWidget(missing_, 1);
    missing_->setElided(true);
    setKind(*fix_, "small", true);
    line->addWidget(fix_);
    column->addWidget(health_);
    connect(fix_, &QAbstractButton::clicked, this, [this] { healthWanted.send(); });
    connect(toggle_, &QAbstractButton::clicked, this, [this] { tracker_.toggle(); });
    subscribe(tracker_.captureHealthChanged, *this, [this] { showState(); });
    subscribe(tracker_.presenceChanged, *this, [this] { showState(); });
    subscribe(tracker_.isTrackingChanged, *this, [this](bool) { showState(); });
    subscribe(context.didChange, *this, [this](const EntityChange& change) {
        const bool isRecord = &change.entity->entityDescription() == &ActivityRecord::description();
        if (isRecord) showSoon();
    });
    setRail(false);
}

void RecordingCard::setRail(bool isRail) {
    isRail_ = isRail;
    for (Label* const label : {state_, application_, since_})
        label->setVisible(!isRail);
    setKind(*toggle_, isRail ? "ghost small" : "small");
    layout()->setContentsMargins(isRail                                 ? QMargins(6, 6, 6, 6)
                                 : layoutDirection() == Qt::RightToLeft ? QMargins(11, 10, 29, 9)
                                                                        : QMargins(13, 10, 11, 9));
    state_->setIndent(isRail || layoutDirection() == Qt::RightToLeft ? 0 : 16);
    showState();
}

void RecordingCard::showSoon() {
    if (std::exchange(isShownSoon_, true)) return;
    postFor(*this, runLoop_, [this] {
        isShownSoon_ = false;
        showState();
    });
}

void RecordingCard::showState() {
    const bool isTracking = tracker_.isTracking();
    const auto state = recordingState(tracker_);
    state_->setText(qt(recordingTitle(state, localization_)));
    const QString action = qt(isTracking ? localization_.text("menu_bar_pause_recording")
                                         : localization_.text("menu_bar_start_recording"));
    toggle_->setIcon(icon(isTracking ? "pause" : "record"));
    toggle_->setAccessibleName(action);
    toggle_->setToolTip(action);
    if (state == RecordingState::blind)
        showTrouble();
    else
        showRecord();
    showHealth();
    update();
}

void RecordingCard::showHealth() {
    const auto& health = tracker_.captureHealth();
    const auto missing = missingSight(health, localization_);
    missing_->setText(qt(missing));
    missing_->setToolTip(qt(captureTrouble(health, localization_).reason));
    fix_->setAccessibleName(qt(localization_.text("health_fix") + ", " + missing));
    health_->setVisible(tracker_.isTracking() && !isRail_ && (!health.canSee() || !missing.empty()));
}

/// The reason and the remedy take as many lines as they need: nobody can act on half of them.
void RecordingCard::showTrouble() {
    const auto trouble = captureTrouble(tracker_.captureHealth(), localization_);
    for (const auto& [label, text] : {std::pair(application_, &trouble.reason), std::pair(since_, &trouble.remedy)}) {
        label->setElided(false);
        label->setWordWrap(true);
        label->setText(qt(*text));
    }
    setToolTip(isRail_ ? qt(trouble.reason + " " + trouble.remedy) : QString());
}

void RecordingCard::showRecord() {
    since_->setWordWrap(false);
    application_->setWordWrap(false);
    application_->setElided(true);
    setToolTip(isRail_ ? qt(recordingSentence(tracker_, localization_)) : QString());
    const auto& record = tracker_.currentRecord();
    const bool isShown = tracker_.isTracking() && record != nullptr;
    application_->setText(isShown ? qt(record->appName().value_or(localization_.text("unknown_app"))) : QString(" "));
    since_->setText(isShown ? qt(localization_.text("ui_recording_since", localDateText(record->startTime(), "HH:mm")))
                            : QString(" "));
    if (tracker_.isTracking()) {
        if (const auto away = tracker_.awaySince())
            application_->setText(qt(localization_.text("ui_away_since", sinceText(*away))));
    } else if (const auto paused = tracker_.pausedSince()) {
        application_->setText(qt(localization_.text("ui_paused_since", sinceText(*paused))));
    }
}

void RecordingCard::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Theme& colors = theme();
    if (!isRail_) paintPanel(painter, rect(), Metrics::cardRadius, colors.surface, colors.line);
    painter.setPen(Qt::NoPen);
    painter.setBrush(recordingColor(recordingState(tracker_)));
    const QRect dot = isRail_ ? QRect(width() / 2 + 3, height() / 2 - 11, railDot, railDot) : dotInCard;
    painter.drawEllipse(QStyle::visualRect(layoutDirection(), rect(), dot));
}

void RecordingCard::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange) setRail(isRail_);
    if (event->type() == QEvent::PaletteChange) update();
}

}  // namespace quorvane
