#pragma once

#include "base/TimeZone.h"
#include "platform/RunLoop.h"
#include "shell/state/MyActivityView.h"

#include <QScrollArea>
#include <memory>

namespace quorvane {

/// What week and month have in common: while shown they rebuild once for all changes of a turn of the loop, and when a
/// new day begins; hidden they do nothing and catch up when they are shown. While records are read what is shown stays,
/// or nothing is.
class OverviewArea : public QScrollArea {
public:
    /// It shows the records of this mode.
    OverviewArea(MyActivityView& activity, TimelineViewMode mode, QWidget* parent);

protected:
    [[nodiscard]] MyActivityView& activity() { return activity_; }
    /// Have the records been read that it shows?
    [[nodiscard]] bool isKnown() const;
    /// Makes everything anew of the records and shows it.
    virtual void rebuild() = 0;
    /// A full minute of the day on which it was rebuilt last.
    virtual void minutePassed(Date /*now*/) {}

    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void rebuildNow();
    void rebuildSoon();
    void awaitMinute();

    MyActivityView& activity_;
    TimelineViewMode mode_;
    QWidget* blank_;  ///< over a picture of an earlier time
    Date rebuiltAt_;
    std::shared_ptr<const TimeZone> zone_;  ///< in which it was rebuilt
    bool isRebuildPosted_ = false;
    std::unique_ptr<platform::WorkItem> nextMinute_;
};

}  // namespace quorvane
