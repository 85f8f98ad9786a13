#pragma once

#include "base/Signal.h"
#include "base/Uuid.h"
#include "billing/ExportState.h"
#include "l10n/Localization.h"
#include "shell/export/ProjectSelectionCard.h"
#include "shell/look/Card.h"

#include <utility>
#include <vector>

class QGridLayout;

namespace quorvane {

class Chip;
class EmptyState;
class Label;

/// The projects of an export: cards side by side, as many as the width allows, and how many are selected. Without
/// projects it says so.
class ProjectSelection : public Card {
public:
    ProjectSelection(ExportState& state, const Localization& localization, QWidget* parent = nullptr);

    /// Shows the projects that there are now.
    void refresh();
    /// The user has selected a project, or no longer.
    Signal<> changed;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    using Shown = std::vector<std::pair<Uuid, ProjectSelectionCard::Content>>;

    void makeCards();
    void place();
    void count();

    ExportState& state_;
    const Localization& localization_;
    Chip* count_;
    QWidget* head_;
    QWidget* grid_;
    QGridLayout* cells_;
    EmptyState* empty_;
    Shown shown_;
    std::vector<ProjectSelectionCard*> cards_;
    int columns_ = 0;
};

}  // namespace quorvane
