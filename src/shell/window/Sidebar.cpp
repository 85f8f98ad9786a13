#include "shell/window/Sidebar.h"

#include "shell/look/Controls.h"
#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Theme.h"
#include "shell/signals/Subscribe.h"
#include "shell/window/RecordingCard.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

namespace quorvane {
namespace {

constexpr int markSize = 26;

}  // namespace

Sidebar::Sidebar(ActivityTracker& tracker, ModelContext& context, platform::RunLoop& runLoop,
                 const Localization& localization, QWidget* parent)
    : QWidget(parent), column_(new QVBoxLayout(this)) {
    column_->setSpacing(0);
    addHead(*column_);
    addSections(*column_, localization);
    column_->addStretch(1);
    recording_ = new RecordingCard(tracker, context, runLoop, localization, this);
    column_->addWidget(recording_);
    subscribe(recording_->healthWanted, *this, [this] { healthWanted.send(); });
    addTools(*column_, localization);
    setRail(false);
}

void Sidebar::addHead(QVBoxLayout& column) {
    auto* const mark = new IconView("quorvane", markSize, &Theme::text, this);
    name_ = new Label("Quorvane", TypeRole::head, &Theme::text, this);
    auto* const row = new QHBoxLayout;
    row->setContentsMargins(8, 0, 0, 0);
    row->setSpacing(10);
    row->addWidget(mark);
    row->addWidget(name_, 1);
    column.addLayout(row);
    column.addSpacing(17);
}

void Sidebar::addSections(QVBoxLayout& column, const Localization& localization) {
    for (const MainSection section : allMainSections) {
        auto* const button = pushButton(qt(title(section, localization)), "navigation", this);
        button->setIcon(icon(iconName(section)));
        button->setAccessibleName(button->text());
        button->setCheckable(true);
        button->setAutoExclusive(true);
        connect(button, &QAbstractButton::clicked, this, [this, section] { sectionChosen.send(section); });
        column.addWidget(button);
        sections_.push_back(button);
    }
}

void Sidebar::addTools(QVBoxLayout& column, const Localization& localization) {
    auto* const settings = iconButton("settings", qt(localization.text("settings")));
    auto* const sync = iconButton("cloud", qt(localization.text("ui_sync_title")));
    auto* const about = iconButton("info", qt(localization.text("about_menu_title")));
    connect(settings, &QAbstractButton::clicked, this, [this] { settingsWanted.send(); });
    connect(sync, &QAbstractButton::clicked, this, [this] { cloudSyncWanted.send(); });
    connect(about, &QAbstractButton::clicked, this, [this] { aboutWanted.send(); });
    tools_ = new QBoxLayout(QBoxLayout::LeftToRight);
    tools_->addWidget(settings, 0, Qt::AlignHCenter);
    tools_->addStretch(1);
    tools_->addWidget(sync, 0, Qt::AlignHCenter);
    tools_->addStretch(1);
    tools_->addWidget(about, 0, Qt::AlignHCenter);
    column.addSpacing(10);
    column.addLayout(tools_);
}

void Sidebar::setRail(bool isRail) {
    isRail_ = isRail;
    setFixedWidth(isRail ? railWidth : fullWidth);
    column_->setContentsMargins(isRail ? QMargins(5, 16, 6, 12) : QMargins(12, 16, 13, 12));
    name_->setVisible(!isRail);
    for (QPushButton* const button : sections_) {
        button->setText(isRail ? QString() : button->accessibleName());
        button->setToolTip(isRail ? button->accessibleName() : QString());
    }
    recording_->setRail(isRail);
    tools_->setDirection(isRail ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
}

void Sidebar::setSection(MainSection section) {
    sections_.at(static_cast<std::size_t>(section))->setChecked(true);
}

void Sidebar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const Theme& colors = theme();
    painter.fillRect(rect(), colors.side);
    const int edge = layoutDirection() == Qt::RightToLeft ? 0 : width() - 1;
    painter.fillRect(edge, 0, 1, height(), colors.line);
}

}  // namespace quorvane
