#pragma once

#include "shell/state/RulesDashboardView.h"

#include <QWidget>

class QComboBox;
class QLineEdit;

namespace quorvane {

/// The condition of the draft: field, operator and value side by side, or below each other where that is too narrow.
class RuleConditionFields : public QWidget {
public:
    RuleConditionFields(RulesDashboardView& state, const Localization& localization, QWidget* parent = nullptr);
    /// Takes over what the draft says.
    void show(const RuleDraft& draft);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void fill();
    void place(bool isNarrow);

    RulesDashboardView& state_;
    const Localization& localization_;
    QComboBox* field_;
    QComboBox* operator_;
    QLineEdit* value_;
    bool isNarrow_ = false;
};

}  // namespace quorvane
