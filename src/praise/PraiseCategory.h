#pragma once

#include "base/RawValue.h"

namespace quorvane {

/// What a praise is about. All of them in order: `RawValues<PraiseCategory>::table`.
enum class PraiseCategory {
    productivity,
    creativity,
    dedication,
    achievement,
    future,
    comparison,
    motivation,
    humor,
    wisdom,
    success,
    social,
    entertainment
};

template <>
struct RawValues<PraiseCategory> {
    static constexpr RawValueTable<PraiseCategory, 12> table{{{PraiseCategory::productivity, "productivity"},
                                                              {PraiseCategory::creativity, "creativity"},
                                                              {PraiseCategory::dedication, "dedication"},
                                                              {PraiseCategory::achievement, "achievement"},
                                                              {PraiseCategory::future, "future"},
                                                              {PraiseCategory::comparison, "comparison"},
                                                              {PraiseCategory::motivation, "motivation"},
                                                              {PraiseCategory::humor, "humor"},
                                                              {PraiseCategory::wisdom, "wisdom"},
                                                              {PraiseCategory::success, "success"},
                                                              {PraiseCategory::social, "social"},
                                                              {PraiseCategory::entertainment, "entertainment"}}};
};

}  // namespace quorvane
