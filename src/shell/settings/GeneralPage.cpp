#include "shell/settings/GeneralPage.h"

#include "shell/look/Boxes.h"
#include "shell/look/Controls.h"
#include "shell/look/IconView.h"
#include "shell/look/Theme.h"
#include "shell/signals/Subscribe.h"

#include <QComboBox>

namespace quorvane {
namespace {

constexpr int languageWidth = 200;

}  // namespace

GeneralPage::GeneralPage(SettingsView& settings, AutoStartManager& autoStart, const Localization& localization)
    : SettingsPage(localization) {
    addSection("appearance_section_title")
        .addSwitch("hide_dock_icon_toggle", settings.hideDockIcon)
        ->setHelp(text("hide_dock_icon_help"));
    addLoginItem(autoStart);
    addLanguage(settings);
}

void GeneralPage::addLoginItem(AutoStartManager& autoStart) {
    auto* const box = switchBox({});
    connect(box, &QAbstractButton::clicked, this, [&autoStart](bool isOn) { autoStart.setAutoStart(isOn); });
    auto* const row = addSection("auto_start_section_title").addRow("auto_start_toggle", box);
    auto* const status = new QWidget;
    auto* const line = lineBox(6, status);
    line->addWidget(new IconView(QStringLiteral("check-circle"), 15, &Theme::ok));
    line->addWidget(new Label(text("auto_start_enabled_status"), TypeRole::label, &Theme::ok), 1);
    row->addLine(status);
    row->setHelp(text("auto_start_help"));
    const auto show = [&autoStart, box, status] {
        box->setChecked(autoStart.isAutoStartEnabled());
        status->setVisible(autoStart.isAutoStartEnabled());
    };
    subscribe(autoStart.changed, *this, show);
    show();
}

void GeneralPage::addLanguage(SettingsView& settings) {
    auto* const languages = new QComboBox;
    languages->setFixedWidth(languageWidth);
    for (const auto& [language, code] : RawValues<SupportedLanguage>::table)
        languages->addItem(QString::fromUtf8(displayName(language).data()));
    languages->setCurrentIndex(static_cast<int>(settings.selectedLanguage));
    connect(languages, &QComboBox::currentIndexChanged, this,
            [&settings](int index) { settings.selectedLanguage = static_cast<SupportedLanguage>(index); });
    addSection("language_section_title").addRow("language_picker_label", languages)->setHelp(text("language_help"));
}

}  // namespace quorvane
