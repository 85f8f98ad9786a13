#pragma once

#include "l10n/Localization.h"
#include "shell/state/AppCategoryManagementView.h"

#include <QWidget>
#include <string>

class QLineEdit;

namespace quorvane {

class FlowLayout;
class Label;

/// The user's own categories, each with a button that removes it, and a field for a new one.
class OwnCategories : public QWidget {
public:
    OwnCategories(AppCategoryManagementView& view, const Localization& localization, QWidget* parent = nullptr);

private:
    QWidget* field();
    void addPill(const std::string& category);
    void showCategories();
    void add();

    AppCategoryManagementView& view_;
    const Localization& localization_;
    FlowLayout* pills_ = nullptr;
    QWidget* pillsArea_ = nullptr;
    Label* empty_ = nullptr;
    QLineEdit* name_ = nullptr;
};

}  // namespace quorvane
