#pragma once

#include "base/Signal.h"
#include "l10n/Localization.h"
#include "shell/state/AppCategoryManagementView.h"

#include <QWidget>
#include <string>
#include <vector>

class QVBoxLayout;
class QPushButton;

namespace quorvane {

class AppPreferenceRow;

/// The applications with a remembered category, and the user's own categories. All changes are kept at once.
class OrganizationPage : public QWidget {
public:
    OrganizationPage(AppCategoryManagementView& view, const Localization& localization, QWidget* parent = nullptr);

private:
    void addSearch(QVBoxLayout& column);
    void showRows();
    void addRow(const AppCategoryManagementView::Row& row);
    void remove(const std::string& appName);
    QPushButton* makeAddButton();
    QWidget* emptyList();
    void openForm(bool isNew);

    AppCategoryManagementView& view_;
    const Localization& localization_;
    QVBoxLayout* list_ = nullptr;
    QWidget* search_ = nullptr;
    std::vector<AppPreferenceRow*> rows_;
};

}  // namespace quorvane
