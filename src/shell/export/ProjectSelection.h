#pragma once

#include "base/Signal.h"
#include "base/Uuid.h"
#include "billing/ExportState.h"
#include "l10n/Localization.h"
#include "shell/look/Card.h"

#include <string>
#include <vector>

class QGridLayout;

namespace quorvane {

class Chip;
class EmptyState;

/// The projects of an export: check boxes side by side, as many as the width allows, and how many are selected.
/// Without projects it says so.
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
    /// What is shown of a project.
    struct Shown {
        Uuid id;
        std::string name;
        std::string client;  ///< what stands below the name, also where there is none
        std::string color;   ///< name of a tone
        friend bool operator==(const Shown&, const Shown&) = default;
    };

    [[nodiscard]] QWidget* makeHead(const QString& title);
    [[nodiscard]] QWidget* makeBox(const Shown& project);
    void makeBoxes();
    void place();
    void count();

    ExportState& state_;
    const Localization& localization_;
    Chip* count_;
    QWidget* head_;
    QWidget* projects_;
    QGridLayout* cells_;
    EmptyState* empty_;
    std::vector<Shown> shown_;
    std::vector<QWidget*> boxes_;
};

}  // namespace quorvane
