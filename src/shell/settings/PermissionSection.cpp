#include "shell/settings/PermissionSection.h"

#include "shell/look/Controls.h"
#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Theme.h"
#include "shell/settings/SettingsSection.h"
#include "shell/signals/Subscribe.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace quorvane {

PermissionSection::PermissionSection(PermissionRows& permissions, const Localization& localization, QWidget* parent)
    : QWidget(parent), permissions_(permissions),
      again_(pushButton(qt(localization.text("refresh_permission_status")))) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    auto* const section = new SettingsSection(qt(localization.text("permission_status")));
    column->addWidget(section);
    const auto rows = permissions_.rows();
    lines_.reserve(rows.size());
    for (const PermissionRows::Row& row : rows)
        section->addRow(addLine(row));
    again_->setIcon(icon(QStringLiteral("refresh")));
    setKind(*again_, "small", true);
    connect(again_, &QAbstractButton::clicked, this, [this] { permissions_.refresh(); });
    auto* const foot = new QWidget;
    auto* const line = new QHBoxLayout(foot);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(again_);
    line->addStretch(1);
    section->addRow(foot);
    subscribe(permissions_.changed, *this, [this] { refresh(); });
    refresh();
}

QWidget* PermissionSection::addLine(const PermissionRows::Row& row) {
    auto* const control = new QWidget;
    auto* const line = new QHBoxLayout(control);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(6);
    Line parts;
    parts.icon = new IconView(QStringLiteral("check-circle"), 16, &Theme::ok);
    parts.state = new Label({}, TypeRole::label, &Theme::ok);
    parts.grant = pushButton(qt(row.grantText));
    setKind(*parts.grant, "small", true);
    connect(parts.grant, &QAbstractButton::clicked, this,
            [this, permission = row.permission] { permissions_.grant(permission); });
    line->addWidget(parts.icon);
    line->addWidget(parts.state);
    line->addSpacing(6);
    line->addWidget(parts.grant);
    lines_.push_back(parts);
    auto* const whole = new SettingsRow(qt(row.title), control);
    whole->setHelp(qt(row.help));
    return whole;
}

void PermissionSection::refresh() {
    const auto rows = permissions_.rows();
    for (std::size_t index = 0; index < rows.size(); ++index) {
        const PermissionRows::Row& row = rows.at(index);
        const Line& line = lines_[index];
        const auto ink = row.isGranted ? &Theme::ok : &Theme::warn;
        line.icon->setIcon(row.isGranted ? QStringLiteral("check-circle") : QStringLiteral("close-circle"), ink);
        line.state->setText(qt(row.state));
        line.state->setColor(ink);
        line.grant->setText(qt(row.grantText));
        line.grant->setAccessibleName(qt(row.title + ", " + row.grantText));
        line.grant->setVisible(!row.grantText.empty());
    }
    again_->setEnabled(!permissions_.isChecking() || again_->hasFocus());  // a focused button stays where it is
}

}  // namespace quorvane
