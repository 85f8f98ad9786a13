#pragma once

#include "shell/state/RulesDashboardView.h"

#include <QWidget>
#include <memory>

namespace quorvane {

struct AppServices;

/// The rules section: the list and the form beside each other, or as two pages where that is too narrow.
class RulesPage : public QWidget {
public:
    explicit RulesPage(const AppServices& services, QWidget* parent = nullptr);
    RulesPage(std::unique_ptr<RulesDashboardView> state, const Localization& localization, QWidget* parent = nullptr);
    ~RulesPage() override;

    [[nodiscard]] RulesDashboardView& state();
    /// The list, also while it is hidden.
    [[nodiscard]] QWidget* mainView() const;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace quorvane
