#include "shell/window/SyncStatusWell.h"

#include "shell/look/Chip.h"
#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/state/CloudKitSyncView.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace quorvane {
namespace {

constexpr int symbolSize = 20;
constexpr int wellSide = 40;

using Availability = CloudKitSyncView::Availability;

Chip::Tone toneOf(Availability availability) {
    switch (availability) {
    case Availability::checking: return Chip::Tone::neutral;
    case Availability::available: return Chip::Tone::ok;
    case Availability::unavailable: return Chip::Tone::warn;
    }
    return Chip::Tone::neutral;
}

struct SymbolLook {
    QColor Theme::*ink;
    QColor Theme::*ground;
};

SymbolLook symbolLookOf(const CloudKitSyncView& state) {
    if (state.isSyncing()) return {&Theme::accInk, &Theme::accSoft};
    if (state.availability() == Availability::available) return {&Theme::ok, &Theme::okSoft};
    return {&Theme::text2, &Theme::surface};
}

}  // namespace

SyncStatusWell::SyncStatusWell(QWidget* parent)
    : Well("", parent), symbol_(new IconView({}, symbolSize, &Theme::text2)),
      status_(new Label({}, TypeRole::labelPlain, &Theme::text2)), chip_(new Chip({})) {
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
    const auto [ink, ground] = symbolLookOf(state);
    symbol_->setIcon(state.symbol(), ink);
    symbol_->setWell(wellSide, Metrics::cardRadius, ground);
    status_->setText(qt(state.statusText()));
    chip_->setText(qt(state.availabilityText()));
    chip_->setTone(toneOf(state.availability()));
}

}  // namespace quorvane
