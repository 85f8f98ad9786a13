#include "shell/window/AboutSheet.h"

#include "shell/look/Label.h"
#include "shell/look/Sheet.h"
#include "shell/look/Theme.h"
#include "shell/window/Mark.h"

#include <QVBoxLayout>

namespace quorvane::AboutSheet {
namespace {

constexpr int width = 420;
constexpr int markSize = 72;
constexpr int textWidth = 300;

Label* centred(const QString& text, TypeRole role, QColor Theme::*color) {
    auto* const label = new Label(text, role, color);
    label->setAlignment(Qt::AlignCenter);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

}  // namespace

void open(QWidget& window, const Localization& localization, const ApplicationInfo& application) {
    auto* const sheet = new Sheet(window, {}, width);
    sheet->setAccessibleName(qt(localization.text("about_menu_title")));
    auto& body = sheet->body();
    body.addWidget(new Mark(markSize), 0, Qt::AlignHCenter);
    body.addSpacing(12);
    body.addWidget(centred("Quorvane", TypeRole::title, &Theme::text));
    body.addWidget(centred(qt(localization.text("ui_about_version", application.shortVersion.value_or("-"),
                                                application.build.value_or("-"))),
                           TypeRole::labelPlain, &Theme::text2));
    body.addSpacing(12);
    auto* const description = centred(qt(localization.text("ui_about_description")), TypeRole::body, &Theme::text2);
    description->setWordWrap(true);
    description->setFixedWidth(textWidth);
    body.addWidget(description, 0, Qt::AlignHCenter);
    body.addSpacing(16);
    sheet->open();
}

}  // namespace quorvane::AboutSheet
