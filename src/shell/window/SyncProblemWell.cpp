#include "shell/window/SyncProblemWell.h"

#include "shell/look/IconView.h"
#include "shell/look/Kind.h"
#include "shell/look/Label.h"
#include "shell/look/Theme.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace quorvane {
namespace {

constexpr int iconSize = 17;

Label* selectable(TypeRole role) {
    auto* const label = new Label({}, role, &Theme::bad);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

}  // namespace

SyncProblemWell::SyncProblemWell(QWidget* parent)
    : Well("bad", parent), icon_(new IconView(QStringLiteral("warn"), iconSize, &Theme::bad)),
      text_(selectable(TypeRole::body)), cause_(selectable(TypeRole::caption)) {
    auto* const words = new QVBoxLayout;
    words->setSpacing(2);
    words->addWidget(text_);
    words->addWidget(cause_);
    auto* const line = new QHBoxLayout(this);
    line->setContentsMargins(15, 10, 15, 10);
    line->setSpacing(10);
    auto* const mark = new QVBoxLayout;
    mark->setContentsMargins(0, 3, 0, 0);
    mark->addWidget(icon_, 0, Qt::AlignTop);
    line->addLayout(mark);
    line->addLayout(words, 1);
}

void SyncProblemWell::show(const std::optional<CloudKitSyncView::Problem>& problem) {
    setVisible(problem.has_value());
    if (!problem) return;
    const bool isFailure = problem->isFailure;
    setKind(*this, isFailure ? "well bad" : "well info");
    QColor Theme::*const ink = isFailure ? &Theme::bad : &Theme::accInk;
    icon_->setIcon(isFailure ? QStringLiteral("warn") : QStringLiteral("info"), ink);
    text_->setColor(ink);
    text_->setText(qt(problem->text));
    cause_->setColor(ink);
    cause_->setText(qt(problem->cause));
    cause_->setVisible(!problem->cause.empty());
}

}  // namespace quorvane
