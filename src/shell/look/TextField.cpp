#include "shell/look/TextField.h"
#include "shell/look/Controls.h"
#include "shell/look/Kind.h"

#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Theme.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace quorvane {

TextField::TextField(const QString& placeholder, const QString& name, QWidget* parent)
    : QWidget(parent), edit_(new QLineEdit), icon_(new IconView(QStringLiteral("warn"), 14, &Theme::bad)),
      message_(new Label(QString(), TypeRole::caption, &Theme::bad)) {
    edit_->setPlaceholderText(placeholder);
    edit_->setAccessibleName(name);
    message_->setWordWrap(true);
    auto* line = new QHBoxLayout;
    line->setSpacing(4);
    line->addWidget(icon_, 0, Qt::AlignTop);
    line->addWidget(message_, 1);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addWidget(edit_);
    column->addLayout(line);
    setFocusProxy(edit_);
    showMessage();
}

void TextField::setError(const QString& error) {
    if (error == error_) return;
    error_ = error;
    showMessage();
    // What went wrong is said when it appears, not only when the field is reached again.
    if (!QAccessible::isActive()) return;
    QAccessibleEvent event(edit_, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&event);
}

void TextField::setHint(const QString& hint) {
    hint_ = hint;
    showMessage();
}

void TextField::showMessage() {
    const bool isWrong = !error_.isEmpty();
    const QString& shown = isWrong ? error_ : hint_;
    icon_->setVisible(isWrong);
    message_->setVisible(!shown.isEmpty());
    message_->setColor(isWrong ? &Theme::bad : &Theme::text3);
    message_->setText(shown);
    edit_->setAccessibleDescription(shown);
    setKind(*edit_, "error", isWrong);
}

}  // namespace quorvane
