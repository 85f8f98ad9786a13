#pragma once

#include "shell/settings/SettingsPage.h"
#include "shell/state/AppCategoryManagementView.h"

#include <string>
#include <vector>

class QLineEdit;

namespace quorvane {

class FlowLayout;

/// The applications with a remembered category, and the user's own categories. All changes are kept at once.
class OrganizationPage : public SettingsPage {
public:
    OrganizationPage(AppCategoryManagementView& view, const Localization& localization);

private:
    void addApplications();
    QLayout* searchLine();
    QPushButton* addButton();
    void showApplications();
    [[nodiscard]] QWidget* row(const AppCategoryManagementView::Row& row);
    [[nodiscard]] QWidget* emptyList();
    void remove(const std::string& appName);
    void openForm(bool isNew);

    void addOwnCategories();
    QLayout* categoryLine();
    void showCategories();
    [[nodiscard]] QWidget* pill(const std::string& category);
    void enterCategory();

    AppCategoryManagementView& view_;
    QLineEdit* search_ = nullptr;
    QVBoxLayout* list_ = nullptr;
    std::vector<QPushButton*> deleteButtons_;  ///< in the order of the rows
    Label* noCategories_ = nullptr;
    QWidget* pillsArea_ = nullptr;
    FlowLayout* pills_ = nullptr;
    QLineEdit* newCategory_ = nullptr;
};

}  // namespace quorvane
