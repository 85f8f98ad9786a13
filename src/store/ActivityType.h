#pragma once

#include "base/RawValue.h"

namespace quorvane {

/// What held the user's attention.
enum class ActivityType { app, document, url, idle, sleep };

template <>
struct RawValues<ActivityType> {
    static constexpr RawValueTable<ActivityType, 5> table{{{ActivityType::app, "app"},
                                                           {ActivityType::document, "document"},
                                                           {ActivityType::url, "url"},
                                                           {ActivityType::idle, "idle"},
                                                           {ActivityType::sleep, "sleep"}}};
};

}  // namespace quorvane
