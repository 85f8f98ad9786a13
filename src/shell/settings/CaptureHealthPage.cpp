#include "shell/settings/CaptureHealthPage.h"

#include "shell/look/Alert.h"
#include "shell/look/Controls.h"
#include "shell/look/IconWell.h"
#include "shell/look/Theme.h"
#include "shell/signals/Subscribe.h"

#include <QBoxLayout>
#include <QClipboard>
#include <QGuiApplication>

namespace quorvane {
namespace {

using platform::Mend;
using State = CaptureHealthView::State;

constexpr Seconds betweenLooks = 2s;

QString iconOf(State state) {
    return state == State::works    ? QStringLiteral("check-circle")
           : state == State::inPart ? QStringLiteral("warn-line")
                                    : QStringLiteral("close-circle");
}

Tone toneOf(State state) {
    return state == State::works ? Tone::ok : state == State::inPart ? Tone::warn : Tone::bad;
}

}  // namespace

CaptureHealthPage::CaptureHealthPage(CaptureHealthView& health, platform::RunLoop& runLoop,
                                     const Localization& localization)
    : SettingsPage(localization), health_(health), runLoop_(runLoop) {
    add(summary());
    section_ = &addSection("health_channels");
    subscribe(health_.changed, *this, [this] { refresh(); });
    health_.refresh();
    refresh();
}

QWidget* CaptureHealthPage::summary() {
    well_ = new IconWell(iconOf(State::works), Tone::ok);
    title_ = new Label({}, TypeRole::bodyStrong, &Theme::text);
    explanation_ = new Label({}, TypeRole::body, &Theme::text2);
    explanation_->setWordWrap(true);
    well_->words().addWidget(title_);
    well_->words().addWidget(explanation_);
    mend_ = pushButton({}, "small");
    connect(mend_, &QAbstractButton::clicked, this, [this] { mend(health_.mend()); });
    well_->addAction(mend_);
    return well_;
}

QString CaptureHealthPage::mendText(Mend mend) const {
    if (mend == Mend::nothing) return {};
    return mend == Mend::browser ? text("health_copy_command") : text("health_fix");
}

void CaptureHealthPage::refresh() {
    const State state = health_.state();
    well_->setTone(iconOf(state), toneOf(state));
    title_->setText(qt(health_.title()));
    explanation_->setText(qt(health_.explanation()));
    explanation_->setVisible(!health_.explanation().empty());
    mend_->setText(mendText(health_.mend()));
    mend_->setVisible(health_.mend() != Mend::nothing);
    for (std::size_t index = 0; index < health_.rows().size(); ++index)
        showRow(index);
}

void CaptureHealthPage::showRow(std::size_t index) {
    if (index == rows_.size()) {
        rows_.push_back(new StateRow);
        connect(&rows_.back()->button(), &QAbstractButton::clicked, this,
                [this, index] { mend(health_.rows().at(index).mend); });
        section_->addRow(rows_.back());
    }
    const CaptureHealthView::Row& row = health_.rows()[index];
    rows_[index]->setState({.title = qt(row.title),
                            .help = qt(row.remedy.empty() ? row.answer : row.answer + ". " + row.remedy),
                            .iconName = iconOf(row.state),
                            .tone = toneOf(row.state),
                            .word = qt(row.sign),
                            .mend = mendText(row.mend)});
}

void CaptureHealthPage::mend(Mend mend) {
    if (mend == Mend::browser) {
        const QString command = QString::fromLatin1(CaptureHealthView::browserCommand);
        QGuiApplication::clipboard()->setText(command);
        return Toast::show(*window(), text("health_copied"), command);
    }
    if (mend == Mend::accessibility) return health_.grantAccessibility();
    Alert::show(*window(),
                {.title = text("health_consent_title"),
                 .text = text("health_consent_text"),
                 .choices = {{.text = text("health_consent_yes"), .act = [this] { install(); }, .isPrimary = true},
                             {.text = text("cancel"), .act = {}}}});
}

void CaptureHealthPage::install() {
    const auto outcome = health_.installAid();
    Toast::show(*window(), qt(outcome.title), qt(outcome.says));
}

void CaptureHealthPage::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    health_.refresh();
    watching_ = runLoop_.every(betweenLooks, [this] { health_.refresh(); });
}

void CaptureHealthPage::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    watching_.reset();
}

}  // namespace quorvane
