#include "shell/look/Labelled.h"

#include "shell/look/Label.h"
#include "shell/look/Theme.h"

#include <QComboBox>

namespace quorvane {

QVBoxLayout* labelled(const QString& label, QWidget& field) {
    auto* const column = columnBox(6);
    auto* const words = new Label(label, TypeRole::label, &Theme::text2);
    words->setBuddy(&field);
    field.setAccessibleName(label);
    column->addWidget(words);
    column->addWidget(&field);
    return column;
}

QComboBox* fieldCombo(const QString& name) {
    auto* const combo = new QComboBox;
    combo->setAccessibleName(name);
    combo->setAccessibleDescription(name);  // its name is what is chosen, on this desktop
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(1);
    combo->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    return combo;
}

}  // namespace quorvane
