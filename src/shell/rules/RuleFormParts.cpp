#include "shell/rules/RuleFormParts.h"

#include "shell/look/Label.h"
#include "shell/look/Theme.h"

#include <QComboBox>
#include <QEvent>
#include <QVBoxLayout>

namespace quorvane::RuleFormParts {
namespace {

class WheelGuard : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override {
        const auto* const field = dynamic_cast<const QWidget*>(watched);
        if (event->type() != QEvent::Wheel || field == nullptr || field->hasFocus()) return false;
        event->ignore();  // goes on to what the field lies on
        return true;
    }
};

}  // namespace

QVBoxLayout* labelled(const QString& label, QWidget& field) {
    auto* const layout = new QVBoxLayout;
    layout->setSpacing(labelGap);
    auto* const words = new Label(label, TypeRole::label, &Theme::text2);
    words->setBuddy(&field);
    field.setAccessibleName(label);
    layout->addWidget(words);
    layout->addWidget(&field);
    return layout;
}

QComboBox* makeCombo(const QString& name) {
    auto* const combo = new QComboBox;
    combo->setAccessibleName(name);
    combo->setAccessibleDescription(name);  // its name is what is chosen, on this desktop
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(1);
    combo->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    leaveWheelToForm(*combo);
    return combo;
}

void leaveWheelToForm(QWidget& field) {
    field.setFocusPolicy(Qt::StrongFocus);
    field.installEventFilter(new WheelGuard(&field));
}

}  // namespace quorvane::RuleFormParts
