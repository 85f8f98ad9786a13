#pragma once

#include "l10n/Localization.h"

#include <QWidget>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

class QPushButton;
class QVBoxLayout;

namespace quorvane {

class FlowLayout;
class Label;
class TextField;

/// The form of category and tags: one category or none, any number of tags, and a field for tags that aren't offered.
/// It edits what somebody else keeps, and who outlives it.
class CategoryChoice : public QWidget {
public:
    struct Subject {
        std::optional<std::string>& category;
        std::set<std::string>& tags;
        std::string title;                     ///< above the categories
        std::vector<std::string> offered;      ///< categories
        std::vector<std::string> suggested{};  ///< of them, for this application
    };
    CategoryChoice(Subject subject, const Localization& localization, QWidget* parent = nullptr);

    /// Takes what was typed as a tag and not entered. Before anything is saved.
    void finish();

private:
    [[nodiscard]] QWidget* suggestions();
    [[nodiscard]] FlowLayout* categoryChips(const std::vector<std::string>& names);
    void addTags(QVBoxLayout& page);
    void showTag(const std::string& tag);
    void showCount();
    void choose(const std::optional<std::string>& category);

    Subject subject_;
    const Localization& localization_;
    std::vector<std::pair<std::string, QPushButton*>> categories_;  ///< a suggested one has two chips
    std::map<std::string, QPushButton*> tags_;
    FlowLayout* tagFlow_ = nullptr;
    Label* count_ = nullptr;
    TextField* field_ = nullptr;
};

}  // namespace quorvane
