#include "shell/window/PendingSheet.h"

#include "shell/look/EmptyState.h"
#include "shell/look/Sheet.h"
#include "shell/look/Typography.h"

#include <QVBoxLayout>

namespace quorvane::PendingSheet {

void open(QWidget& window, const QString& title, const QString& iconName, const Localization& localization) {
    constexpr int width = 460;
    auto* const sheet = new Sheet(window, title, width);
    sheet->body().addWidget(new EmptyState(iconName, title, qt(localization.text("feature_in_development"))));
    sheet->open();
}

}  // namespace quorvane::PendingSheet
