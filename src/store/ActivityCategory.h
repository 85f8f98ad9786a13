#pragma once

#include "base/RawValue.h"

namespace quorvane {

/// The built-in categories. People read them in their own language, see `StoredNames`.
enum class ActivityCategory { work, learn, entertainment, exercise, social, rest, travel, shopping, other, idle };

template <>
struct RawValues<ActivityCategory> {
    static constexpr RawValueTable<ActivityCategory, 10> table{{{ActivityCategory::work, "工作"},
                                                                {ActivityCategory::learn, "学习"},
                                                                {ActivityCategory::entertainment, "娱乐"},
                                                                {ActivityCategory::exercise, "运动"},
                                                                {ActivityCategory::social, "社交"},
                                                                {ActivityCategory::rest, "休息"},
                                                                {ActivityCategory::travel, "出行"},
                                                                {ActivityCategory::shopping, "购物"},
                                                                {ActivityCategory::other, "其他"},
                                                                {ActivityCategory::idle, "空闲"}}};
};

}  // namespace quorvane
