#pragma once

#include "diagnostics/ConsoleSink.h"
#include "l10n/Localization.h"
#include "platform/ApplicationIcons.h"
#include "praise/RandomIndex.h"
#include "rules/CategoryTagManager.h"
#include "shell/signals/Keeps.h"
#include "shell/state/MyActivityView.h"
#include "timeline/ProcessedActivityItem.h"
#include "tracking/ActivityTracker.h"

#include <QWidget>
#include <memory>

namespace quorvane {

struct ActivityLayout;
struct ActivityPageParts;

/// The timeline section: the header, and below it the day with its lists and panels, the week or the month.
class ActivityPage : private Keeps<ActivityPageParts>, public QWidget {
public:
    /// All of it outlives the page.
    struct Services {
        MyActivityView& activity;
        ActivityTracker& tracker;
        const CategoryTagManager& categories;
        ModelContext& context;
        const platform::ApplicationIcons& applicationIcons;
        const Localization& localization;
        ConsoleSink& console;
        RandomWords randomWords = secureRandomWord;  ///< chooses the praise
    };

    explicit ActivityPage(const Services& services, QWidget* parent = nullptr);
    ~ActivityPage() override;

    // What the window's keys do
    void setMode(TimelineViewMode mode);
    void goToToday();

    /// What shows the time and takes the keys for it; null until there is something to show.
    [[nodiscard]] QWidget* mainView() const;

protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void build();
    void follow();
    void place();
    void explainEmptyDay();
    [[nodiscard]] bool isCovered() const;
    void cover();
    void placePraise(const ActivityLayout& layout);
    /// What the praise leaves of the side for the details.
    [[nodiscard]] QRect detailsColumn(const ActivityLayout& layout) const;
    void placeDetails(const ActivityLayout& layout);
    void placeProjectPanel(const ActivityLayout& layout);
    void placeAwayLine();
    void letGo();
    void chooseCategory(const ProcessedActivityItem& item);
    [[nodiscard]] QRect mirrored(const QRect& rectangle) const;
};

}  // namespace quorvane
