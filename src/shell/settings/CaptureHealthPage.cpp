#include "shell/settings/CaptureHealthPage.h"

#include "shell/look/Alert.h"
#include "shell/look/Controls.h"
#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/settings/SettingsSection.h"
#include "shell/settings/SettingsWell.h"
#include "shell/signals/Subscribe.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QVBoxLayout>

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

QColor Theme::*inkOf(State state) {
    return state == State::works ? &Theme::ok : state == State::inPart ? &Theme::warn : &Theme::bad;
}

QColor Theme::*groundOf(State state) {
    return state == State::works ? &Theme::okSoft : state == State::inPart ? &Theme::warnSoft : &Theme::badSoft;
}

}  // namespace

CaptureHealthPage::CaptureHealthPage(CaptureHealthView& health, platform::RunLoop& runLoop,
                                     const Localization& localization, QWidget* parent)
    : QWidget(parent), health_(health), runLoop_(runLoop), localization_(localization),
      section_(new SettingsSection(qt(localization.text("health_channels")))) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Metrics::cardGap);
    column->addWidget(summary());
    column->addWidget(section_);
    subscribe(health_.changed, *this, [this] { refresh(); });
    health_.refresh();
    refresh();
}

QWidget* CaptureHealthPage::summary() {
    well_ = new SettingsWell;
    auto* const box = new QHBoxLayout(well_);
    box->setContentsMargins(17, 12, 16, 12);
    box->setSpacing(12);
    summaryIcon_ = new IconView(iconOf(State::works), 16, &Theme::ok);
    box->addWidget(summaryIcon_, 0, Qt::AlignTop);
    auto* const words = new QVBoxLayout;
    words->setSpacing(3);
    summaryTitle_ = new Label({}, TypeRole::bodyStrong, &Theme::text);
    summaryText_ = new Label({}, TypeRole::body, &Theme::text2);
    summaryText_->setWordWrap(true);
    words->addWidget(summaryTitle_);
    words->addWidget(summaryText_);
    box->addLayout(words, 1);
    summaryMend_ = mendButton();
    connect(summaryMend_, &QAbstractButton::clicked, this, [this] { mend(health_.mend()); });
    box->addWidget(summaryMend_, 0, Qt::AlignTop);
    return well_;
}

QPushButton* CaptureHealthPage::mendButton() {
    auto* const button = pushButton({});
    setKind(*button, "small", true);
    return button;
}

std::string CaptureHealthPage::mendText(Mend mend) const {
    return mend == Mend::browser ? localization_.text("health_copy_command") : localization_.text("health_fix");
}

void CaptureHealthPage::addLine() {
    auto* const control = new QWidget;
    auto* const box = new QHBoxLayout(control);
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(6);
    Line line;
    line.icon = new IconView(iconOf(State::works), 16, &Theme::ok);
    line.sign = new Label({}, TypeRole::label, &Theme::ok);
    line.mend = mendButton();
    const auto index = lines_.size();
    connect(line.mend, &QAbstractButton::clicked, this, [this, index] { mend(health_.rows().at(index).mend); });
    box->addWidget(line.icon);
    box->addWidget(line.sign);
    box->addWidget(line.mend);
    line.row = new SettingsRow({}, control);
    section_->addRow(line.row);
    lines_.push_back(line);
}

void CaptureHealthPage::show(Line& line, const CaptureHealthView::Row& row) {
    line.row->setTitle(qt(row.title));
    line.row->setHelp(qt(row.remedy.empty() ? row.answer : row.answer + ". " + row.remedy));
    line.icon->setIcon(iconOf(row.state), inkOf(row.state));
    line.sign->setText(qt(row.sign));
    line.sign->setColor(inkOf(row.state));
    const auto text = mendText(row.mend);
    line.mend->setText(qt(text));
    line.mend->setAccessibleName(qt(row.title + ", " + text));
    line.mend->setVisible(row.mend != Mend::nothing);
}

void CaptureHealthPage::refresh() {
    const State state = health_.state();
    well_->setGround(groundOf(state));
    summaryIcon_->setIcon(iconOf(state), inkOf(state));
    summaryTitle_->setText(qt(health_.title()));
    summaryText_->setText(qt(health_.explanation()));
    summaryText_->setVisible(!health_.explanation().empty());
    const Mend mend = health_.mend();
    summaryMend_->setText(qt(mendText(mend)));
    summaryMend_->setVisible(mend != Mend::nothing);
    const auto& rows = health_.rows();
    while (lines_.size() < rows.size())
        addLine();
    for (std::size_t index = 0; index < rows.size(); ++index)
        show(lines_[index], rows[index]);
}

void CaptureHealthPage::mend(Mend mend) {
    if (mend == Mend::browser) {
        QGuiApplication::clipboard()->setText(QString::fromLatin1(CaptureHealthView::browserCommand));
        Toast::show(*window(), qt(localization_.text("health_copied")),
                    QString::fromLatin1(CaptureHealthView::browserCommand));
        return;
    }
    if (mend == Mend::accessibility) return health_.grantAccessibility();
    Alert::show(*window(), {.title = qt(localization_.text("health_consent_title")),
                            .text = qt(localization_.text("health_consent_text")),
                            .choices = {{.text = qt(localization_.text("health_consent_yes")),
                                         .act = [this] { install(); },
                                         .isPrimary = true},
                                        {.text = qt(localization_.text("cancel")), .act = {}}}});
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
