#include "shell/look/IconWell.h"

#include "shell/look/AccessibleRole.h"
#include "shell/look/Boxes.h"
#include "shell/look/IconView.h"
#include "shell/look/Kind.h"

namespace quorvane {

IconWell::IconWell(const QString& iconName, Tone tone, QWidget* parent)
    : QFrame(parent), icon_(new IconView(iconName, 16, inkOf(tone))), line_(lineBox(12, this)), words_(columnBox(3)) {
    setAccessibleRole(*this, QAccessible::Grouping);
    line_->setContentsMargins(17, 12, 16, 12);
    line_->addWidget(icon_, 0, Qt::AlignTop);
    line_->addLayout(words_, 1);
    setTone(iconName, tone);
}

void IconWell::setTone(const QString& iconName, Tone tone) {
    icon_->setIcon(iconName, inkOf(tone));
    setKind(*this, (QByteArray("well ") + wordOf(tone)).constData());
}

void IconWell::addAction(QWidget* button) {
    line_->addWidget(button, 0, Qt::AlignTop);
}

}  // namespace quorvane
