#include "shell/look/Card.h"
#include "shell/look/Controls.h"

#include "shell/look/AccessibleRole.h"
#include "shell/look/Kind.h"

namespace quorvane {

Card::Card(QWidget* parent) : QFrame(parent) {
    setKind(*this, "card");
    setAccessibleRole(*this, QAccessible::Grouping);
}

Well::Well(const char* tone, QWidget* parent) : QFrame(parent) {
    setKind(*this, (QByteArrayLiteral("well ") + tone).constData());
    setAccessibleRole(*this, QAccessible::Grouping);
}

Separator::Separator(QWidget* parent) : QFrame(parent) {
    setKind(*this, "rule");
    setAccessibleRole(*this, QAccessible::Separator);
    setFixedHeight(1);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

}  // namespace quorvane
