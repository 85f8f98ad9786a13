#include "shell/rules/RulesPage.h"

#include "shell/app/AppServices.h"
#include "shell/look/Alert.h"
#include "shell/look/Boxes.h"
#include "shell/look/Controls.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/rules/RuleForm.h"
#include "shell/rules/RuleList.h"

#include <QKeyEvent>
#include <QShortcut>

namespace quorvane {
namespace {

constexpr int listWidth = 400;
constexpr int pageNarrowBelow = 860;

}  // namespace

RulesPage::RulesPage(const AppServices& services, QWidget* parent)
    : RulesPage(std::make_unique<RulesDashboardView>(services.context, services.runLoop, services.categories,
                                                     services.localization, services.console),
                services.localization, parent) {}

RulesPage::RulesPage(std::unique_ptr<RulesDashboardView> state, const Localization& localization, QWidget* parent)
    : QWidget(parent), state_(std::move(state)), localization_(localization),
      back_(iconButton(QStringLiteral("left"), qt(localization.text("nav_rules")))),
      import_(pushButton(qt(localization.text("builtin_rules_import_button")))),
      new_(pushButton(qt(localization.text("ui_new")), "primary")),
      list_(new RuleList(*state_, localization,
                         {.edit = [this] { edit(); }, .remove = [this] { remove(); }, .import = [this] { import(); }})),
      form_(new RuleForm(*state_, localization, [this] { remove(); })) {
    auto* const page = columnBox(Metrics::cardGap, this);
    page->setContentsMargins(Metrics::pageMargin, 20, Metrics::pageMargin, Metrics::pageMargin);
    page->addLayout(head());
    auto* const cards = lineBox(Metrics::cardGap);
    cards->addWidget(list_);
    cards->addWidget(form_, 1);
    page->addLayout(cards, 1);
    addKeys();
    place();
}

QLayout* RulesPage::head() {
    auto* const title = new Label(qt(localization_.text("nav_rules")), TypeRole::title, &Theme::text);
    title->setElided(true);
    import_->setIcon(icon(QStringLiteral("save")));
    new_->setIcon(icon(QStringLiteral("plus")));
    connect(back_, &QAbstractButton::clicked, this, [this] { showForm(false); });
    connect(import_, &QAbstractButton::clicked, this, [this] { import(); });
    connect(new_, &QAbstractButton::clicked, this, [this] { startNew(); });
    auto* const line = lineBox(8);
    line->addWidget(back_);
    line->addWidget(title, 1);
    line->addWidget(import_);
    line->addWidget(new_);
    return line;
}

void RulesPage::addKeys() {
    const auto on = [this](const QKeySequence& keys, auto act) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, act);
    };
    on(QKeySequence(Qt::CTRL | Qt::Key_N), [this] { startNew(); });
    on(QKeySequence(Qt::CTRL | Qt::Key_S), [this] { state_->save(); });
    on(QKeySequence(Qt::CTRL | Qt::Key_F), [this] {
        showForm(false);
        list_->focusSearch();
    });
}

void RulesPage::place() {
    const bool isNarrow = width() < pageNarrowBelow;
    list_->setMinimumWidth(isNarrow ? 0 : listWidth);
    list_->setMaximumWidth(isNarrow ? QWIDGETSIZE_MAX : listWidth);
    back_->setVisible(isNarrow && isFormShown_);
    import_->setVisible(!isNarrow || !isFormShown_);
    new_->setVisible(!isNarrow || !isFormShown_);
    // First what shows: a focus in what hides would wander elsewhere.
    for (const bool isShown : {true, false}) {
        if (isShown == (!isNarrow || isFormShown_)) form_->setVisible(isShown);
        if (isShown == (!isNarrow || !isFormShown_)) list_->setVisible(isShown);
    }
}

void RulesPage::showForm(bool isShown) {
    if (isShown == isFormShown_) return;
    isFormShown_ = isShown;
    place();
    if (!isShown && list_->isVisible()) list_->view()->setFocus(Qt::OtherFocusReason);
}

void RulesPage::startNew() {
    state_->startNew();
    edit();
}

void RulesPage::edit() {
    const bool wasHidden = !form_->isVisible();
    showForm(true);
    if (wasHidden || state_->selectedRule() == nullptr) form_->focusName();
}

void RulesPage::remove() {
    const auto removed = state_->removeSelected();
    if (removed == nullptr) return;
    showForm(false);
    list_->view()->setFocus(Qt::OtherFocusReason);
    list_->announceRemoval(removed->name());
}

void RulesPage::import() {
    const auto result = state_->importBuiltInRules();
    if (!result) return;
    Alert::show(*window(), {.title = qt(localization_.text("builtin_rules_import_result_title")),
                            .text = qt(BuiltInRuleTemplates::message(*result, localization_)),
                            .iconName = QStringLiteral("rules"),
                            .choices = {{.text = qt(localization_.text("close"))}}});
}

QWidget* RulesPage::mainView() const {
    return list_->view();
}

void RulesPage::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    place();
}

void RulesPage::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && back_->isVisible()) return showForm(false);
    QWidget::keyPressEvent(event);
}

}  // namespace quorvane
