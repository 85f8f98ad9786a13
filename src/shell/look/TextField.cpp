#include "shell/look/TextField.h"

#include "shell/look/Boxes.h"
#include "shell/look/IconView.h"
#include "shell/look/Kind.h"
#include "shell/look/Label.h"
#include "shell/look/Theme.h"

#include <QAccessible>

namespace quorvane {

CheckedField::CheckedField(QWidget& field, QWidget* parent)
    : QWidget(parent), field_(field), icon_(new IconView(QStringLiteral("warn"), 14, &Theme::bad)),
      message_(new Label(QString(), TypeRole::caption, &Theme::bad)) {
    message_->setWordWrap(true);
    auto* const line = lineBox(4);
    line->addWidget(icon_, 0, Qt::AlignTop);
    line->addWidget(message_, 1);
    auto* const column = columnBox(4, this);
    column->addWidget(&field_);
    column->addLayout(line);
    setFocusProxy(&field_);
    showMessage();
}

void CheckedField::setError(const QString& error) {
    if (error == error_) return;
    error_ = error;
    showMessage();
    // What went wrong is said when it appears, not only when the field is reached again.
    if (!QAccessible::isActive()) return;
    QAccessibleEvent event(&field_, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&event);
}

void CheckedField::setHint(const QString& hint) {
    hint_ = hint;
    showMessage();
}

void CheckedField::showMessage() {
    const bool isWrong = !error_.isEmpty();
    const QString& shown = isWrong ? error_ : hint_;
    icon_->setVisible(isWrong);
    message_->setVisible(!shown.isEmpty());
    message_->setColor(isWrong ? &Theme::bad : &Theme::text3);
    message_->setText(shown);
    field_.setAccessibleDescription(shown);
    setKind(field_, "error", isWrong);
}

TextField::TextField(const QString& placeholder, const QString& name, QWidget* parent)
    : TextField(new QLineEdit, parent) {
    edit_->setPlaceholderText(placeholder);
    edit_->setAccessibleName(name);
}

}  // namespace quorvane
