#pragma once

#include "l10n/Localization.h"
#include "shell/state/MainSection.h"

#include <QWidget>

namespace quorvane {

/// A section that has no screen: it says so.
class PendingPage : public QWidget {
public:
    PendingPage(MainSection section, const Localization& localization, QWidget* parent = nullptr);
};

}  // namespace quorvane
