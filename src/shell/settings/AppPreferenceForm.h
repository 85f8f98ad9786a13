#pragma once

#include "l10n/Localization.h"
#include "shell/state/AppCategoryManagementView.h"

#include <QWidget>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>

class QVBoxLayout;
class QPushButton;

namespace quorvane {

class FlowLayout;
class Label;
class TextField;

/// Name, one category or none, and any number of tags of an application.
class AppPreferenceForm : public QWidget {
public:
    AppPreferenceForm(AppCategoryManagementView& view, const Localization& localization, QWidget* parent = nullptr);

    /// Calls `changed` after the name has changed.
    void follow(std::function<void()> changed) { nameChanged_ = std::move(changed); }

private:
    void addName(QVBoxLayout& page);
    void addCategories(QVBoxLayout& page);
    void addTags(QVBoxLayout& page);
    void showTags();
    void showCount();
    void enterTag();
    void choose(const std::optional<std::string>& category);

    AppCategoryManagementView& view_;
    const Localization& localization_;
    std::map<std::string, QPushButton*> categories_;
    std::map<std::string, QPushButton*> tags_;
    FlowLayout* tagFlow_ = nullptr;
    Label* count_ = nullptr;
    TextField* customTag_ = nullptr;
    std::function<void()> nameChanged_;
};

}  // namespace quorvane
