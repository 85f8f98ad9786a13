#include "shell/settings/SettingsSheet.h"

#include "shell/look/Controls.h"
#include "shell/look/Sheet.h"
#include "shell/look/Typography.h"
#include "shell/settings/SettingsPages.h"
#include "shell/settings/SettingsTabs.h"
#include "shell/signals/Subscribe.h"

#include <QVBoxLayout>

namespace quorvane::SettingsSheet {
namespace {

constexpr int width = 760;
constexpr int height = 684;

SettingsTabs* makeTabs(const Localization& texts) {
    return new SettingsTabs({{"sliders", qt(texts.text("settings_tab_general"))},
                             {"history", qt(texts.text("settings_tab_tracking"))},
                             {"eye", qt(texts.text("settings_tab_capture"))},
                             {"folder", qt(texts.text("settings_tab_organization"))},
                             {"pulse", qt(texts.text("settings_tab_diagnostics"))}});
}

}  // namespace

void open(QWidget& window, AppServices& services, const MakeLogSection& makeLogSection, Page page) {
    const Localization& texts = services.localization;
    auto* const sheet = new Sheet(window, qt(texts.text("settings")), width, height);
    auto* const tabs = makeTabs(texts);
    auto* const pages = new SettingsPages(services, makeLogSection);
    sheet->setTabs(tabs);
    sheet->body().addWidget(pages);
    subscribe(tabs->chosen, *sheet, [sheet, pages](int index) {
        pages->showPage(index);
        sheet->scrollToTop();
    });
    auto* const cancel = pushButton(qt(texts.text("cancel")));
    auto* const save = pushButton(qt(texts.text("save")), "primary");
    QObject::connect(cancel, &QAbstractButton::clicked, sheet, [sheet] { sheet->close(); });
    QObject::connect(save, &QAbstractButton::clicked, sheet, [sheet, pages] {
        if (pages->save()) sheet->close();
    });
    tabs->choose(static_cast<int>(page));
    sheet->addAction(cancel);
    sheet->addAction(save);
    sheet->open();
}

}  // namespace quorvane::SettingsSheet
