#pragma once

#include "platform/RunLoop.h"
#include "shell/settings/SettingsPage.h"
#include "shell/state/CaptureHealthView.h"

#include <memory>
#include <vector>

namespace quorvane {

class IconWell;

/// What can be seen, and each channel with its answer and a way to mend it. While it shows it follows the desktop.
class CaptureHealthPage : public SettingsPage {
public:
    CaptureHealthPage(CaptureHealthView& health, platform::RunLoop& runLoop, const Localization& localization);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QWidget* summary();
    [[nodiscard]] QString mendText(platform::Mend mend) const;
    void refresh();
    void showRow(std::size_t index);
    void mend(platform::Mend mend);
    void install();

    CaptureHealthView& health_;
    platform::RunLoop& runLoop_;
    IconWell* well_ = nullptr;
    Label* title_ = nullptr;
    Label* explanation_ = nullptr;
    QPushButton* mend_ = nullptr;
    SettingsSection* section_ = nullptr;
    std::vector<StateRow*> rows_;
    std::unique_ptr<platform::Timer> watching_;  ///< while it shows
};

}  // namespace quorvane
