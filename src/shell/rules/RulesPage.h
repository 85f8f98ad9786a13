#pragma once

#include "shell/state/RulesDashboardView.h"

#include <QWidget>
#include <memory>

class QPushButton;

namespace quorvane {

struct AppServices;
class RuleForm;
class RuleList;

/// The rules section: the list and the form beside each other, or as two pages where that is too narrow.
class RulesPage : public QWidget {
public:
    explicit RulesPage(const AppServices& services, QWidget* parent = nullptr);
    RulesPage(std::unique_ptr<RulesDashboardView> state, const Localization& localization, QWidget* parent = nullptr);

    [[nodiscard]] RulesDashboardView& state() { return *state_; }
    /// The list, also while it is hidden.
    [[nodiscard]] QWidget* mainView() const;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] QLayout* head();
    void addKeys();
    /// Where it is narrow only one of list and form is there.
    void place();
    void showForm(bool isShown);
    void startNew();
    void edit();
    void remove();
    void import();

    std::unique_ptr<RulesDashboardView> state_;
    const Localization& localization_;
    QPushButton* back_;
    QPushButton* import_;
    QPushButton* new_;
    RuleList* list_;
    RuleForm* form_;
    bool isFormShown_ = false;  ///< where there is room for one of the two
};

}  // namespace quorvane
