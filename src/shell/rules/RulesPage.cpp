#include "shell/rules/RulesPage.h"

#include "shell/app/AppServices.h"
#include "shell/look/Alert.h"
#include "shell/look/Controls.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/rules/RuleForm.h"
#include "shell/rules/RuleList.h"
#include "shell/rules/RuleListView.h"
#include "shell/signals/Subscribe.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QShortcut>
#include <QVBoxLayout>
#include <utility>

namespace quorvane {
namespace {

constexpr int listWidth = 400;
constexpr int pageNarrowBelow = 860;

}  // namespace

struct RulesPage::Parts {
    Parts(RulesPage& owner, std::unique_ptr<RulesDashboardView> ownState, const Localization& texts);

    QLayout* makeHead();
    void addKeys();
    /// Below `pageNarrowBelow` only one of list and form is there.
    void place();
    void showForm(bool isShown);
    void startNew();
    void edit();
    void remove();
    void import();

    RulesPage& page;
    std::unique_ptr<RulesDashboardView> state;
    const Localization& localization;
    QPushButton* back;
    QPushButton* importButton;
    QPushButton* newButton;
    RuleList* list;
    RuleForm* form;
    bool isFormShown = false;  ///< where there is room for one of the two
};

RulesPage::Parts::Parts(RulesPage& owner, std::unique_ptr<RulesDashboardView> ownState, const Localization& texts)
    : page(owner), state(std::move(ownState)), localization(texts),
      back(iconButton(QStringLiteral("left"), qt(texts.text("nav_rules")))),
      importButton(pushButton(qt(texts.text("builtin_rules_import_button")))),
      newButton(pushButton(qt(texts.text("ui_new")), "primary")), list(new RuleList(*state, texts)),
      form(new RuleForm(*state, texts)) {
    auto* const layout = new QVBoxLayout(&page);
    layout->setContentsMargins(Metrics::pageMargin, 20, Metrics::pageMargin, Metrics::pageMargin);
    layout->setSpacing(Metrics::cardGap);
    layout->addLayout(makeHead());
    auto* const cards = new QHBoxLayout;
    cards->setSpacing(Metrics::cardGap);
    cards->addWidget(list);
    cards->addWidget(form, 1);
    layout->addLayout(cards, 1);
    addKeys();
    subscribe(list->view().opened, page, [this] { edit(); });
    subscribe(list->importWanted, page, [this] { import(); });
    subscribe(list->view().removalWanted, page, [this] { remove(); });
    subscribe(form->removalWanted, page, [this] { remove(); });
    place();
}

QLayout* RulesPage::Parts::makeHead() {
    auto* const head = new QHBoxLayout;
    head->setSpacing(8);
    head->addWidget(back);
    auto* const title = new Label(qt(localization.text("nav_rules")), TypeRole::title, &Theme::text);
    title->setElided(true);
    head->addWidget(title, 1);
    importButton->setIcon(icon(QStringLiteral("save")));
    newButton->setIcon(icon(QStringLiteral("plus")));
    head->addWidget(importButton);
    head->addWidget(newButton);
    connect(back, &QAbstractButton::clicked, &page, [this] { showForm(false); });
    connect(importButton, &QAbstractButton::clicked, &page, [this] { import(); });
    connect(newButton, &QAbstractButton::clicked, &page, [this] { startNew(); });
    return head;
}

void RulesPage::Parts::addKeys() {
    const auto on = [this](const QKeySequence& keys, auto act) {
        connect(new QShortcut(keys, &page), &QShortcut::activated, &page, act);
    };
    on(QKeySequence(Qt::CTRL | Qt::Key_N), [this] { startNew(); });
    on(QKeySequence(Qt::CTRL | Qt::Key_S), [this] { state->save(); });
    on(QKeySequence(Qt::CTRL | Qt::Key_F), [this] {
        showForm(false);
        list->focusSearch();
    });
}

void RulesPage::Parts::place() {
    const bool isNarrow = page.width() < pageNarrowBelow;
    if (isNarrow) {
        list->setMinimumWidth(0);
        list->setMaximumWidth(QWIDGETSIZE_MAX);
    } else {
        list->setFixedWidth(listWidth);
    }
    back->setVisible(isNarrow && isFormShown);
    importButton->setVisible(!isNarrow || !isFormShown);
    newButton->setVisible(!isNarrow || !isFormShown);
    // First what shows: a focus in what hides would wander elsewhere.
    for (const bool isShown : {true, false}) {
        if (isShown == (!isNarrow || isFormShown)) form->setVisible(isShown);
        if (isShown == (!isNarrow || !isFormShown)) list->setVisible(isShown);
    }
}

void RulesPage::Parts::showForm(bool isShown) {
    if (isShown == isFormShown) return;
    isFormShown = isShown;
    place();
    if (!isShown && list->isVisible()) list->view().setFocus(Qt::OtherFocusReason);
}

void RulesPage::Parts::startNew() {
    state->startNew();
    edit();
}

void RulesPage::Parts::edit() {
    const bool wasHidden = !form->isVisible();
    showForm(true);
    if (wasHidden || state->selectedRule() == nullptr) form->focusName();
}

void RulesPage::Parts::remove() {
    const auto removed = state->removeSelected();
    if (removed == nullptr) return;
    showForm(false);
    list->view().setFocus(Qt::OtherFocusReason);
    list->announceRemoval(removed->name());
}

void RulesPage::Parts::import() {
    const auto result = state->importBuiltInRules();
    if (!result) return;
    Alert::show(*page.window(), {.title = qt(localization.text("builtin_rules_import_result_title")),
                                 .text = qt(BuiltInRuleTemplates::message(*result, localization)),
                                 .iconName = QStringLiteral("rules"),
                                 .choices = {{.text = qt(localization.text("close"))}}});
}

RulesPage::RulesPage(const AppServices& services, QWidget* parent)
    : RulesPage(std::make_unique<RulesDashboardView>(services.context, services.runLoop, services.categories,
                                                     services.localization, services.console),
                services.localization, parent) {}

RulesPage::RulesPage(std::unique_ptr<RulesDashboardView> state, const Localization& localization, QWidget* parent)
    : QWidget(parent), parts_(std::make_unique<Parts>(*this, std::move(state), localization)) {}

RulesPage::~RulesPage() = default;

RulesDashboardView& RulesPage::state() {
    return *parts_->state;
}

QWidget* RulesPage::mainView() const {
    return &parts_->list->view();
}

void RulesPage::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    parts_->place();
}

void RulesPage::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && parts_->back->isVisible()) return parts_->showForm(false);
    QWidget::keyPressEvent(event);
}

}  // namespace quorvane
