#include "shell/window/AboutSheet.h"

#include "shell/app/AppServices.h"
#include "shell/look/Controls.h"
#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Sheet.h"
#include "shell/look/Theme.h"
#include "shell/window/LicencesSheet.h"
#include "updates/ZelkorUpdateCommands.h"

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

/// A button that asks; where nobody can be asked, a line that says where updates come from.
QWidget* updates(AppServices& services) {
    ZelkorUpdateCommands commands(services.updates, services.localization);
    if (!services.updates.hasFeed()) return centred(qt(commands.text()), TypeRole::labelPlain, &Theme::text2);
    auto* const check = pushButton(qt(commands.text()));
    QObject::connect(check, &QAbstractButton::clicked, check, [commands]() mutable { commands.perform(); });
    return check;
}

}  // namespace

void open(QWidget& window, AppServices& services) {
    const Localization& texts = services.localization;
    auto* const sheet = new Sheet(window, {}, width);
    sheet->setAccessibleName(qt(texts.text("about_menu_title")));
    auto& body = sheet->body();
    body.addWidget(new IconView("quorvane", markSize, &Theme::text), 0, Qt::AlignHCenter);
    body.addSpacing(12);
    body.addWidget(centred("Quorvane", TypeRole::title, &Theme::text));
    body.addWidget(centred(qt(texts.text("ui_about_version", services.application.shortVersion.value_or("-"),
                                         services.application.build.value_or("-"))),
                           TypeRole::labelPlain, &Theme::text2));
    body.addSpacing(12);
    auto* const description = centred(qt(texts.text("ui_about_description")), TypeRole::body, &Theme::text2);
    description->setWordWrap(true);
    description->setFixedWidth(textWidth);
    body.addWidget(description, 0, Qt::AlignHCenter);
    body.addSpacing(12);
    body.addWidget(
        centred(QStringLiteral("© 2026 The Quorvane authors · Apache-2.0"), TypeRole::labelPlain, &Theme::text2));
    body.addSpacing(16);
    body.addWidget(updates(services), 0, Qt::AlignHCenter);
    body.addSpacing(4);
    auto* const licences = pushButton(qt(texts.text("ui_licences_button")), "link");
    QObject::connect(licences, &QAbstractButton::clicked, sheet,
                     [&window, &texts] { LicencesSheet::open(window, texts); });
    body.addWidget(licences, 0, Qt::AlignHCenter);
    body.addSpacing(8);
    sheet->open();
}

}  // namespace quorvane::AboutSheet
