#include "shell/rules/RuleFormParts.h"

#include "shell/look/Label.h"
#include "shell/look/Theme.h"

#include <QComboBox>
#include <QVBoxLayout>

namespace quorvane::RuleFormParts {

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
    return combo;
}

}  // namespace quorvane::RuleFormParts
