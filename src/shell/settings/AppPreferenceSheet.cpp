#include "shell/settings/AppPreferenceSheet.h"

#include "shell/chart/CategoryChoice.h"
#include "shell/look/Controls.h"
#include "shell/look/Label.h"
#include "shell/look/Sheet.h"
#include "shell/look/TextField.h"
#include "shell/look/Theme.h"

#include <QVBoxLayout>

namespace quorvane::AppPreferenceSheet {
namespace {

constexpr int width = 600;

}  // namespace

void open(QWidget& window, AppCategoryManagementView& view, const Localization& localization, bool isNew) {
    const auto title = isNew ? localization.text("add_app_pref_title") : localization.text("edit_app_pref_title");
    auto* const sheet = new Sheet(window, qt(title), width);
    const QString nameTitle = qt(localization.text("app_pref_app_name_label"));
    auto* const name = new TextField(nameTitle, nameTitle);
    name->setHint(qt(localization.text("app_pref_app_name_placeholder")));
    name->edit().setText(qt(view.newAppName));
    auto* const choice = new CategoryChoice({.category = view.newAppCategory,
                                             .tags = view.newAppTags,
                                             .title = localization.text("app_pref_select_category"),
                                             .offered = view.offeredCategories()},
                                            localization);
    sheet->body().setSpacing(8);
    sheet->body().addWidget(new Label(nameTitle, TypeRole::label, &Theme::text2));
    sheet->body().addWidget(name);
    sheet->body().addSpacing(12);
    sheet->body().addWidget(choice);
    auto* const cancel = pushButton(qt(localization.text("cancel")));
    auto* const save = pushButton(qt(localization.text("save")), "primary");
    save->setEnabled(view.canSave());
    QObject::connect(&name->edit(), &QLineEdit::textChanged, sheet, [&view, save](const QString& text) {
        view.newAppName = text.toStdString();
        save->setEnabled(view.canSave());
    });
    QObject::connect(cancel, &QAbstractButton::clicked, sheet, [sheet, &view] {
        view.cancel();
        sheet->close();
    });
    QObject::connect(save, &QAbstractButton::clicked, sheet, [sheet, choice, &view] {
        choice->finish();
        sheet->close();  // first, so that the focus goes back before the list is built anew
        view.save();
    });
    sheet->addAction(cancel);
    sheet->addAction(save);
    name->setFocus();
    sheet->open();
}

}  // namespace quorvane::AppPreferenceSheet
