#pragma once

#include "base/Signal.h"
#include "l10n/Localization.h"
#include "shell/state/MainSection.h"
#include "store/ModelContext.h"
#include "tracking/ActivityTracker.h"

#include <QWidget>
#include <vector>

class QVBoxLayout;
class QBoxLayout;
class QPushButton;

namespace quorvane {

class Label;
class RecordingCard;

/// The window's side: the sections, the state of the recording, and the tool bar. In a narrow window it is a rail of
/// icons.
class Sidebar : public QWidget {
public:
    static constexpr int fullWidth = 200;
    static constexpr int railWidth = 56;

    Sidebar(ActivityTracker& tracker, ModelContext& context, platform::RunLoop& runLoop,
            const Localization& localization, QWidget* parent = nullptr);

    void setRail(bool isRail);
    void setSection(MainSection section);

    Signal<MainSection> sectionChosen;
    Signal<> settingsWanted;
    Signal<> healthWanted;
    Signal<> cloudSyncWanted;
    Signal<> aboutWanted;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void addHead(QVBoxLayout& column);
    void addSections(QVBoxLayout& column, const Localization& localization);
    void addTools(QVBoxLayout& column, const Localization& localization);

    Label* name_ = nullptr;
    std::vector<QPushButton*> sections_;  ///< in the sections' order
    RecordingCard* recording_ = nullptr;
    QBoxLayout* tools_ = nullptr;
    QVBoxLayout* column_;
    bool isRail_ = false;
};

}  // namespace quorvane
