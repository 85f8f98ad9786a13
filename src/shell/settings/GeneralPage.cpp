#include "shell/settings/GeneralPage.h"

#include "shell/look/Controls.h"
#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/settings/SettingsSection.h"
#include "shell/signals/Subscribe.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace quorvane {
namespace {

constexpr int languageWidth = 200;

}  // namespace

GeneralPage::GeneralPage(SettingsView& settings, AutoStartManager& autoStart, const Localization& localization,
                         QWidget* parent)
    : QWidget(parent), settings_(settings), autoStart_(autoStart), localization_(localization) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Metrics::cardGap);
    column->addWidget(appearance());
    column->addWidget(startUp());
    column->addWidget(language());
    subscribe(autoStart_.changed, *this, [this] { showAutoStart(); });
    showAutoStart();
}

QWidget* GeneralPage::appearance() {
    auto* const section = new SettingsSection(qt(localization_.text("appearance_section_title")));
    auto* const hide = switchBox({});
    hide->setChecked(settings_.hideDockIcon);
    connect(hide, &QAbstractButton::toggled, this, [this](bool isOn) { settings_.hideDockIcon = isOn; });
    auto* const row = new SettingsRow(qt(localization_.text("hide_dock_icon_toggle")), hide);
    row->setHelp(qt(localization_.text("hide_dock_icon_help")));
    section->addRow(row);
    return section;
}

QWidget* GeneralPage::startUp() {
    auto* const section = new SettingsSection(qt(localization_.text("auto_start_section_title")));
    autoStartSwitch_ = switchBox({});
    connect(autoStartSwitch_, &QAbstractButton::clicked, this, [this](bool isOn) { autoStart_.setAutoStart(isOn); });
    auto* const row = new SettingsRow(qt(localization_.text("auto_start_toggle")), autoStartSwitch_);
    autoStartStatus_ = new QWidget;
    auto* const line = new QHBoxLayout(autoStartStatus_);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(6);
    line->addWidget(new IconView(QStringLiteral("check-circle"), 15, &Theme::ok));
    line->addWidget(new Label(qt(localization_.text("auto_start_enabled_status")), TypeRole::label, &Theme::ok), 1);
    row->addLine(autoStartStatus_);
    row->setHelp(qt(localization_.text("auto_start_help")));
    section->addRow(row);
    return section;
}

void GeneralPage::showAutoStart() {
    autoStartSwitch_->setChecked(autoStart_.isAutoStartEnabled());
    autoStartStatus_->setVisible(autoStart_.isAutoStartEnabled());
}

QWidget* GeneralPage::language() {
    auto* const section = new SettingsSection(qt(localization_.text("language_section_title")));
    auto* const languages = new QComboBox;
    languages->setFixedWidth(languageWidth);
    for (const auto& [language, code] : RawValues<SupportedLanguage>::table)
        languages->addItem(QString::fromUtf8(displayName(language).data()));
    languages->setCurrentIndex(static_cast<int>(settings_.selectedLanguage));
    connect(languages, &QComboBox::currentIndexChanged, this,
            [this](int index) { settings_.selectedLanguage = static_cast<SupportedLanguage>(index); });
    auto* const row = new SettingsRow(qt(localization_.text("language_picker_label")), languages);
    row->setHelp(qt(localization_.text("language_help")));
    section->addRow(row);
    return section;
}

}  // namespace quorvane
