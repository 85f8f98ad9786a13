#include "shell/window/SyncStatusWell.h"

#include "shell/look/AccessibleRole.h"
#include "shell/look/Chip.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/state/CloudKitSyncView.h"
#include "shell/window/SyncSymbol.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

namespace quorvane {
namespace {

using Availability = CloudKitSyncView::Availability;

Chip::Tone toneOf(Availability availability) {
    switch (availability) {
    case Availability::checking: return Chip::Tone::neutral;
    case Availability::available: return Chip::Tone::ok;
    case Availability::unavailable: return Chip::Tone::warn;
    }
    return Chip::Tone::neutral;
}

SyncSymbol::State symbolStateOf(const CloudKitSyncView& state) {
    if (state.isSyncing()) return SyncSymbol::State::syncing;
    return state.availability() == Availability::available ? SyncSymbol::State::available : SyncSymbol::State::idle;
}

}  // namespace

SyncStatusWell::SyncStatusWell(QWidget* parent)
    : QFrame(parent), symbol_(new SyncSymbol), status_(new Label({}, TypeRole::labelPlain, &Theme::text2)),
      chip_(new Chip({})) {
    setAccessibleRole(*this, QAccessible::Grouping);
    status_->setElided(true);
    auto* const words = new QVBoxLayout;
    words->setSpacing(1);
    words->addWidget(new Label(CloudKitSyncView::title, TypeRole::head, &Theme::text));
    words->addWidget(status_);
    auto* const line = new QHBoxLayout(this);
    line->setContentsMargins(16, 14, 16, 14);
    line->setSpacing(12);
    line->addWidget(symbol_);
    line->addLayout(words, 1);
    line->addWidget(chip_);
}

void SyncStatusWell::show(const CloudKitSyncView& state) {
    symbol_->setState(symbolStateOf(state), state.symbol());
    status_->setText(qt(state.statusText()));
    chip_->setText(qt(state.availabilityText()));
    chip_->setTone(toneOf(state.availability()));
}

void SyncStatusWell::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    paintPanel(painter, rect(), Metrics::cardRadius, theme().sunken, theme().isHighContrast ? theme().line : QColor());
}

}  // namespace quorvane
