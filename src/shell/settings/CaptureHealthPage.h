#pragma once

#include "l10n/Localization.h"
#include "platform/RunLoop.h"
#include "shell/state/CaptureHealthView.h"

#include <QWidget>
#include <memory>
#include <vector>

class QVBoxLayout;
class QPushButton;

namespace quorvane {

class IconView;
class Label;
class SettingsRow;
class SettingsSection;
class SettingsWell;

/// What can be seen, and each channel with its answer and a way to mend it. While it shows it follows the desktop.
class CaptureHealthPage : public QWidget {
public:
    CaptureHealthPage(CaptureHealthView& health, platform::RunLoop& runLoop, const Localization& localization,
                      QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    struct Line {
        SettingsRow* row = nullptr;
        IconView* icon = nullptr;
        Label* sign = nullptr;
        QPushButton* mend = nullptr;
    };
    QWidget* summary();
    QPushButton* mendButton();
    [[nodiscard]] std::string mendText(platform::Mend mend) const;
    void addLine();
    void show(Line& line, const CaptureHealthView::Row& row);
    void refresh();
    void mend(platform::Mend mend);
    void install();

    CaptureHealthView& health_;
    platform::RunLoop& runLoop_;
    const Localization& localization_;
    SettingsWell* well_ = nullptr;
    IconView* summaryIcon_ = nullptr;
    Label* summaryTitle_ = nullptr;
    Label* summaryText_ = nullptr;
    QPushButton* summaryMend_ = nullptr;
    SettingsSection* section_ = nullptr;
    std::vector<Line> lines_;
    std::unique_ptr<platform::Timer> watching_;  ///< while it shows
};

}  // namespace quorvane
