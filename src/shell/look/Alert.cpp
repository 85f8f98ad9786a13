#include "shell/look/Alert.h"

#include "shell/look/Controls.h"
#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/Sheet.h"
#include "shell/look/Theme.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>

namespace quorvane {
namespace {

constexpr int alertWidth = 420;
constexpr int wellSide = 40;

struct WellColors {
    QColor Theme::*ground;
    QColor Theme::*ink;
};

WellColors wellColors(const QString& iconName) {
    if (iconName.startsWith(QLatin1String("warn")) || iconName.startsWith(QLatin1String("review"))) {
        return {&Theme::warnSoft, &Theme::warn};
    }
    if (iconName == QLatin1String("trash") || iconName.startsWith(QLatin1String("excl"))) {
        return {&Theme::badSoft, &Theme::bad};
    }
    if (iconName.startsWith(QLatin1String("check"))) return {&Theme::okSoft, &Theme::ok};
    return {&Theme::accSoft, &Theme::accInk};
}

/// One button is filled at most: the primary one, or the destructive one where nothing else is offered but to leave.
const char* kindOf(const std::vector<Alert::Choice>& choices, std::size_t index) {
    const Alert::Choice& choice = choices[index];
    const bool hasPrimary =
        std::any_of(choices.begin(), choices.end(), [](const auto& each) { return each.isPrimary; });
    if (choice.isPrimary) return "primary";
    if (choice.isDestructive) return hasPrimary || choices.size() > 2 ? "danger" : "dangerFill";
    if (choices.size() == 1) return "primary";
    return index + 1 == choices.size() ? "ghost" : "plain";
}

void addWords(QVBoxLayout& body, const Alert::Content& content) {
    const WellColors colors = wellColors(content.iconName);
    auto* icon = new IconView(content.iconName, 20, colors.ink);
    icon->setWell(wellSide, Metrics::cardRadius, colors.ground);
    auto* title = new Label(content.title, TypeRole::head, &Theme::text);
    title->setWordWrap(true);
    auto* text = new Label(content.text, TypeRole::body, &Theme::text2);
    text->setWordWrap(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    if (content.text.isEmpty()) text->hide();
    auto* words = new QVBoxLayout;
    words->setSpacing(6);
    words->addWidget(title);
    words->addWidget(text);
    words->addStretch(1);
    auto* line = new QHBoxLayout;
    line->setSpacing(16);
    line->addWidget(icon, 0, Qt::AlignTop);
    line->addLayout(words, 1);
    body.addLayout(line);
}

}  // namespace

void Alert::show(QWidget& window, const Content& content) {
    auto* sheet = new Sheet(window, content.title, alertWidth);
    sheet->setAccessibleDescription(content.text);
    sheet->hideHead();
    sheet->stackActions();
    addWords(sheet->body(), content);

    // What was chosen is done after the sheet has closed, so that it may open the next one.
    QPushButton* preferred = nullptr;
    for (std::size_t index = 0; index < content.choices.size(); ++index) {
        auto* button = pushButton(content.choices[index].text, kindOf(content.choices, index));
        QObject::connect(button, &QAbstractButton::clicked, sheet,
                         [sheet, index] { sheet->done(static_cast<int>(index) + 1); });
        sheet->addAction(button);
        if (preferred == nullptr || content.choices[index].isPrimary) preferred = button;
    }
    if (preferred != nullptr) sheet->setDefault(preferred);
    QObject::connect(sheet, &QDialog::finished, sheet, [choices = content.choices](int result) {
        const auto chosen = result == QDialog::Rejected ? choices.size() : static_cast<std::size_t>(result);
        if (chosen >= 1 && choices[chosen - 1].act) choices[chosen - 1].act();
    });
    sheet->open();
    if (!QAccessible::isActive()) return;
    QAccessibleEvent event(sheet, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

}  // namespace quorvane
