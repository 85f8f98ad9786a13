#include "shell/rules/RuleList.h"

#include "shell/look/AccessibleRole.h"
#include "shell/look/Controls.h"
#include "shell/look/EmptyState.h"
#include "shell/look/Icons.h"
#include "shell/look/Label.h"
#include "shell/look/Theme.h"
#include "shell/rules/RuleListView.h"
#include "shell/signals/Subscribe.h"

#include <QAction>
#include <QKeyEvent>
#include <QLineEdit>
#include <QVBoxLayout>

namespace quorvane {

RuleList::RuleList(RulesDashboardView& state, const Localization& localization, QWidget* parent)
    : Card(parent), state_(state), localization_(localization), search_(new QLineEdit),
      view_(new RuleListView(state, localization)),
      none_(new EmptyState(QStringLiteral("rules"), qt(localization.text("ui_no_rules_title")),
                           qt(localization.text("ui_no_rules_description")))),
      notFound_(new EmptyState(QStringLiteral("search"), qt(localization.text("no_matching_logs")), {})),
      foot_(new Label({}, TypeRole::labelPlain, &Theme::text2)) {
    auto* const page = new QVBoxLayout(this);
    page->setContentsMargins(1, 1, 1, 1);
    page->setSpacing(0);
    page->addLayout(makeSearch());
    page->addWidget(new Separator);
    for (QWidget* const content :
         {static_cast<QWidget*>(view_), static_cast<QWidget*>(none_), static_cast<QWidget*>(notFound_)})
        page->addWidget(content, 1);
    setAccessibleRole(*foot_, QAccessible::Notification);
    foot_->setWordWrap(true);
    foot_->setContentsMargins(16, 10, 16, 10);
    foot_->hide();
    page->addWidget(foot_);

    auto* const import = pushButton(qt(localization.text("builtin_rules_import_button")));
    import->setIcon(icon(QStringLiteral("save")));
    connect(import, &QAbstractButton::clicked, this, [this] { importWanted.send(); });
    none_->addButton(import);
    subscribe(state_.rowsChanged, *this, [this] { follow(); });
    subscribe(state_.draftChanged, *this, [this] { foot_->hide(); });
    follow();
}

QLayout* RuleList::makeSearch() {
    auto* const line = new QVBoxLayout;
    line->setContentsMargins(12, 12, 12, 11);
    search_->setPlaceholderText(qt(localization_.text("ui_rule_search")));
    search_->setAccessibleName(search_->placeholderText());
    setKind(*search_, "quiet", true);
    search_->addAction(icon(QStringLiteral("search")), QLineEdit::LeadingPosition);
    search_->installEventFilter(this);
    connect(search_, &QLineEdit::textChanged, this,
            [this](const QString& text) { state_.setSearch(text.toStdString()); });
    line->addWidget(search_);
    return line;
}

void RuleList::follow() {
    none_->setVisible(state_.isEmpty());
    notFound_->setVisible(!state_.isEmpty() && state_.rows().empty());
    view_->setVisible(!state_.rows().empty());
}

void RuleList::focusSearch() {
    search_->setFocus(Qt::ShortcutFocusReason);
    search_->selectAll();
}

void RuleList::announceRemoval(const std::string& name) {
    foot_->setText(qt(localization_.text("ui_rule_removed", isolated(qt(name)).toStdString())));
    foot_->show();
    if (!QAccessible::isActive()) return;
    QAccessibleEvent event(foot_, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&event);
}

/// From the search into what it found, and out of it.
bool RuleList::eventFilter(QObject* watched, QEvent* event) {
    if (watched != search_ || event->type() != QEvent::KeyPress) return false;
    const int key = static_cast<const QKeyEvent*>(event)->key();
    if (key == Qt::Key_Down && view_->isVisible()) {
        view_->setFocus(Qt::TabFocusReason);
        return true;
    }
    if (key == Qt::Key_Escape && !search_->text().isEmpty()) {
        search_->clear();
        return true;
    }
    return false;
}

}  // namespace quorvane
