#pragma once

#include "shell/look/Card.h"
#include "shell/state/CloudKitSyncView.h"

#include <optional>

namespace quorvane {

class IconView;
class Label;

/// What stands in the way of a sync, in words, and below it the cause for those who mend it. Hidden where there is
/// nothing.
class SyncProblemWell : public Well {
public:
    explicit SyncProblemWell(QWidget* parent = nullptr);
    void show(const std::optional<CloudKitSyncView::Problem>& problem);

private:
    IconView* icon_;
    Label* text_;
    Label* cause_;
};

}  // namespace quorvane
