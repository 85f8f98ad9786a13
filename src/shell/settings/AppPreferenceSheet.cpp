#include "shell/settings/AppPreferenceSheet.h"

#include "shell/look/Controls.h"
#include "shell/look/Sheet.h"
#include "shell/look/Typography.h"
#include "shell/settings/AppPreferenceForm.h"

#include <QVBoxLayout>

namespace quorvane::AppPreferenceSheet {

void open(QWidget& window, AppCategoryManagementView& view, const Localization& localization, bool isNew) {
    constexpr int width = 600;
    auto* const sheet = new Sheet(
        window, qt(isNew ? localization.text("add_app_pref_title") : localization.text("edit_app_pref_title")), width);
    auto* const form = new AppPreferenceForm(view, localization);
    sheet->body().addWidget(form);
    auto* const cancel = pushButton(qt(localization.text("cancel")));
    auto* const save = pushButton(qt(localization.text("save")), "primary");
    save->setEnabled(view.canSave());
    form->follow([&view, save] { save->setEnabled(view.canSave()); });
    QObject::connect(cancel, &QAbstractButton::clicked, sheet, [sheet, &view] {
        view.cancel();
        sheet->close();
    });
    QObject::connect(save, &QAbstractButton::clicked, sheet, [sheet, &view] {
        sheet->close();  // first, so that the focus goes back before the list is built anew
        view.save();
    });
    sheet->addAction(cancel);
    sheet->addAction(save);
    form->setFocus();
    sheet->open();
}

}  // namespace quorvane::AppPreferenceSheet
