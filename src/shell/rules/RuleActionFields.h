#pragma once

#include "shell/state/RulesDashboardView.h"

#include <QWidget>

class QComboBox;
class QLineEdit;

namespace quorvane {

/// What the draft does: category, project and tags.
class RuleActionFields : public QWidget {
public:
    RuleActionFields(RulesDashboardView& state, const Localization& localization, QWidget* parent = nullptr);
    /// Takes over what the draft says and what there is to choose from.
    void show(const RuleDraft& draft);

private:
    RulesDashboardView& state_;
    const Localization& localization_;
    QComboBox* category_;
    QComboBox* project_;
    QLineEdit* tags_;
};

}  // namespace quorvane
