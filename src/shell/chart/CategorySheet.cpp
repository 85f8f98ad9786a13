#include "shell/chart/CategorySheet.h"

#include "shell/chart/CategoryChoice.h"
#include "shell/look/Controls.h"
#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Sheet.h"
#include "shell/look/Theme.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <utility>

namespace quorvane::CategorySheet {
namespace {

constexpr int width = 600;

/// To what the choice applies, in plain words.
QWidget* scopeNote(const std::string& appName, const Localization& localization) {
    auto* const note = new QWidget;
    auto* const layout = new QHBoxLayout(note);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(new IconView(QStringLiteral("info"), 16, &Theme::text2));
    const auto text = localization.text("ui_category_scope_help", isolated(qt(appName)).toStdString());
    auto* const words = new Label(qt(text), TypeRole::labelPlain, &Theme::text2);
    words->setWordWrap(true);
    layout->addWidget(words, 1);
    return note;
}

}  // namespace

void open(QWidget& window, std::unique_ptr<CategoryPickerState> state, const CategoryTagManager& categories,
          const std::string& appName, const Localization& localization, std::function<void()> saved) {
    auto* const sheet = new Sheet(window, qt(localization.text("ui_category_and_tags")), width);
    if (!appName.empty()) {  // a record without a name is changed alone
        sheet->setSubtitle(isolated(qt(appName)));
        sheet->addToFootStart(scopeNote(appName, localization));
    }
    auto* const choice = new CategoryChoice(std::move(state), categories, localization);
    sheet->body().addWidget(choice);
    auto* const cancel = pushButton(qt(localization.text("cancel")));
    auto* const save = pushButton(qt(localization.text("save")), "primary");
    QObject::connect(cancel, &QAbstractButton::clicked, sheet, [sheet] { sheet->close(); });
    QObject::connect(save, &QAbstractButton::clicked, sheet, [sheet, choice, told = std::move(saved)] {
        choice->save();
        sheet->close();
        if (told) told();
    });
    sheet->addAction(cancel);
    sheet->addAction(save);
    sheet->open();
}

}  // namespace quorvane::CategorySheet
