#pragma once

#include "l10n/Localization.h"
#include "store/ActivityCategory.h"

#include <array>
#include <string>
#include <string_view>

/// Names that are stored in Chinese on every machine, and what people read and type for them.
namespace quorvane::StoredNames {

struct Name {
    std::string_view stored;
    TextKey shown;
};

inline constexpr std::array<Name, 10> categories{{{rawValue(ActivityCategory::work), "category_work"},
                                                  {rawValue(ActivityCategory::learn), "category_learn"},
                                                  {rawValue(ActivityCategory::entertainment), "category_entertainment"},
                                                  {rawValue(ActivityCategory::exercise), "category_exercise"},
                                                  {rawValue(ActivityCategory::social), "category_social"},
                                                  {rawValue(ActivityCategory::rest), "category_rest"},
                                                  {rawValue(ActivityCategory::travel), "category_travel"},
                                                  {rawValue(ActivityCategory::shopping), "category_shopping"},
                                                  {rawValue(ActivityCategory::other), "category_other"},
                                                  {rawValue(ActivityCategory::idle), "category_idle"}}};

/// The tags that are offered, in their order.
inline constexpr std::array<Name, 23> tags{{{"编程", "tag_programming"},   {"设计", "tag_design"},
                                            {"写作", "tag_writing"},       {"会议", "tag_meetings"},
                                            {"邮件", "tag_email"},         {"文档", "tag_documents"},
                                            {"研究", "tag_research"},      {"培训", "tag_training"},
                                            {"深度工作", "tag_deep_work"}, {"创意工作", "tag_creative_work"},
                                            {"管理", "tag_management"},    {"沟通", "tag_communication"},
                                            {"学习", "tag_learning"},      {"阅读", "tag_reading"},
                                            {"练习", "tag_practice"},      {"游戏", "tag_games"},
                                            {"视频", "tag_video"},         {"音乐", "tag_music"},
                                            {"社交", "tag_social"},        {"购物", "tag_shopping"},
                                            {"运动", "tag_exercise"},      {"休息", "tag_rest"},
                                            {"出行", "tag_travel"}}};

/// The application of records that name none.
inline constexpr std::string_view unknownApp = "未知应用";

// What people read; a name of their own as it is.
[[nodiscard]] std::string shownCategory(std::string_view stored, const Localization& localization);
[[nodiscard]] std::string shownTag(std::string_view stored, const Localization& localization);
[[nodiscard]] std::string shownApp(std::string_view stored, const Localization& localization);

// What is stored for what people type: a name as they read it, whatever its case, or one of their own.
[[nodiscard]] std::string storedCategory(std::string_view typed, const Localization& localization);
[[nodiscard]] std::string storedTag(std::string_view typed, const Localization& localization);

}  // namespace quorvane::StoredNames
