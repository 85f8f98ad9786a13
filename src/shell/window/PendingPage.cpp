#include "shell/window/PendingPage.h"

#include "shell/look/EmptyState.h"
#include "shell/look/Typography.h"

#include <QVBoxLayout>

namespace quorvane {

PendingPage::PendingPage(MainSection section, const Localization& localization, QWidget* parent) : QWidget(parent) {
    auto* const layout = new QVBoxLayout(this);
    layout->addStretch(1);
    layout->addWidget(new EmptyState(iconName(section), qt(title(section, localization)),
                                     qt(localization.text("feature_in_development"))));
    layout->addStretch(1);
}

}  // namespace quorvane
