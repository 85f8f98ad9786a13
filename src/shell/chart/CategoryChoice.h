#pragma once

#include "l10n/Localization.h"
#include "rules/CategoryPickerState.h"
#include "rules/CategoryTagManager.h"

#include <QWidget>
#include <memory>
#include <vector>

class QVBoxLayout;
class QPushButton;

namespace quorvane {

class FlowLayout;
class Label;
class TextField;

/// What the sheet of category and tags offers: suggestions, one category or none, any number of tags, and a field for
/// tags that aren't offered.
class CategoryChoice : public QWidget {
public:
    CategoryChoice(std::unique_ptr<CategoryPickerState> state, const CategoryTagManager& categories,
                   const Localization& localization, QWidget* parent = nullptr);

    /// A tag that was typed and not entered counts.
    void save();

private:
    void addSuggestions(QVBoxLayout& page);
    void addCategories(QVBoxLayout& page, const CategoryTagManager& categories);
    void addTags(QVBoxLayout& page);
    QPushButton* addTag(const std::string& tag);
    void enterTags();
    void select(const std::optional<std::string>& category);
    void showCount();

    struct Offered {
        std::string name;
        QPushButton* chip = nullptr;
    };
    std::unique_ptr<CategoryPickerState> state_;
    const Localization& localization_;
    std::vector<Offered> suggestions_;
    std::vector<Offered> categories_;
    std::vector<Offered> tags_;
    FlowLayout* tagFlow_ = nullptr;
    Label* count_ = nullptr;
    TextField* field_ = nullptr;
};

}  // namespace quorvane
