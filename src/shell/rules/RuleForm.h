#pragma once

#include "shell/look/Card.h"
#include "shell/state/RulesDashboardView.h"

#include <functional>
#include <optional>

class QBoxLayout;
class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QGridLayout;
class QLineEdit;
class QPushButton;

namespace quorvane {

class Label;
class RuleActionFields;

/// The form of a rule: it shows the draft, edits it, and says in words what it does.
class RuleForm : public Card {
public:
    /// `remove`: the stored rule shall go.
    RuleForm(RulesDashboardView& state, const Localization& localization, std::function<void()> remove,
             QWidget* parent = nullptr);

    void focusName();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] QWidget* fields();
    [[nodiscard]] QLayout* condition();
    [[nodiscard]] QLayout* options();
    [[nodiscard]] QWidget* summary();
    [[nodiscard]] QLayout* foot(const std::function<void()>& remove);
    void connectFields();
    /// Fields beside each other, or below each other where that is too narrow.
    void place();
    void show();
    void showCondition();

    RulesDashboardView& state_;
    const Localization& localization_;
    QLineEdit* name_;
    QGridLayout* conditionGrid_ = nullptr;
    QComboBox* field_;
    QComboBox* operator_;
    QLineEdit* value_;
    RuleActionFields* action_;
    QBoxLayout* optionLine_ = nullptr;
    QDoubleSpinBox* priority_;
    QCheckBox* isEnabled_;
    QCheckBox* stopProcessing_;
    Label* summary_;
    Label* refusal_;
    QPushButton* remove_;
    QPushButton* save_;
    std::optional<bool> isNarrow_;
};

}  // namespace quorvane
