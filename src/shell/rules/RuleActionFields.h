#pragma once

#include "shell/state/RulesDashboardView.h"

#include <QWidget>
#include <string>
#include <utility>
#include <vector>

class QComboBox;
class QLineEdit;

namespace quorvane {

/// What the draft does: category, project and tags.
class RuleActionFields : public QWidget {
public:
    RuleActionFields(RulesDashboardView& state, const Localization& localization, QWidget* parent = nullptr);
    /// Takes over what the draft says and what there is to choose from.
    void show(const RuleDraft& draft);

protected:
    void changeEvent(QEvent* event) override;

private:
    struct OfferedProject {
        Uuid id;
        std::string name;
        std::string color;
        friend bool operator==(const OfferedProject&, const OfferedProject&) = default;
    };
    void connectFields();
    void showCategories(const RuleDraft& draft);
    void showProjects(const RuleDraft& draft);
    void fillProjects();

    RulesDashboardView& state_;
    const Localization& localization_;
    QComboBox* category_;
    QComboBox* project_;
    QLineEdit* tags_;
    std::vector<std::string> categories_;  ///< behind "none", in the order of the combo box
    std::vector<OfferedProject> projects_;
};

}  // namespace quorvane
