#pragma once

#include "l10n/Localization.h"
#include "shell/state/AutoStartManager.h"
#include "shell/state/SettingsView.h"

#include <QWidget>

class QCheckBox;

namespace quorvane {

/// Appearance, the login item and the language. The login item changes at once, all else in `settings` alone.
class GeneralPage : public QWidget {
public:
    GeneralPage(SettingsView& settings, AutoStartManager& autoStart, const Localization& localization,
                QWidget* parent = nullptr);

private:
    QWidget* appearance();
    QWidget* startUp();
    QWidget* language();
    void showAutoStart();

    SettingsView& settings_;
    AutoStartManager& autoStart_;
    const Localization& localization_;
    QCheckBox* autoStartSwitch_ = nullptr;
    QWidget* autoStartStatus_ = nullptr;
};

}  // namespace quorvane
