#pragma once

#include "shell/state/CloudKitSyncView.h"

#include <QFrame>
#include <optional>

namespace quorvane {

class IconView;
class Label;

/// What stands in the way of a sync, in words, and below it the cause for those who mend it. Hidden where there is
/// nothing.
class SyncProblemWell : public QFrame {
public:
    explicit SyncProblemWell(QWidget* parent = nullptr);
    void show(const std::optional<CloudKitSyncView::Problem>& problem);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    IconView* icon_;
    Label* text_;
    Label* cause_;
    bool isFailure_ = true;
};

}  // namespace quorvane
