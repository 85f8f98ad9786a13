#include "shell/window/LicencesSheet.h"

#include "shell/look/Label.h"
#include "shell/look/Sheet.h"
#include "shell/look/Theme.h"
#include "shell/state/Licences.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <utility>

namespace quorvane::LicencesSheet {
namespace {

constexpr int width = 560;
constexpr int height = 620;
constexpr int betweenLibraries = 14;

void addLibrary(QVBoxLayout& column, const Licence& library) {
    auto* const head = new QHBoxLayout;
    head->setSpacing(12);
    head->addWidget(new Label(qt(library.name), TypeRole::bodyStrong, &Theme::text));
    auto* const licence = new Label(qt(library.licence), TypeRole::labelPlain, &Theme::text2);
    licence->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    licence->setElided(true);
    head->addWidget(licence, 1);
    column.addLayout(head);
    auto* const copyright = new Label(qt(library.copyright), TypeRole::labelPlain, &Theme::text2);
    copyright->setWordWrap(true);
    copyright->setTextInteractionFlags(Qt::TextSelectableByMouse);
    column.addWidget(copyright);
}

}  // namespace

void open(QWidget& window, const Localization& localization) {
    auto* const sheet = new Sheet(window, qt(localization.text("ui_licences_title")), width, height);
    sheet->setSubtitle(qt(localization.text("ui_licences_subtitle")));
    auto& body = sheet->body();
    body.setSpacing(2);
    bool isFirst = true;
    for (const Licence& library : licences()) {
        if (!std::exchange(isFirst, false)) body.addSpacing(betweenLibraries);
        addLibrary(body, library);
    }
    body.addStretch(1);
    sheet->open();
}

}  // namespace quorvane::LicencesSheet
