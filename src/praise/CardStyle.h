#pragma once

#include "base/RawValue.h"

namespace quorvane {

/// How a share card looks. All of them in order: `RawValues<CardStyle>::table`.
enum class CardStyle {
    clean,
    elegantShadow,
    glassmorphism,
    neumorphism,
    gradientCard,
    darkMode,
    businessCard,
    artistic,
    minimal,
    luxury,
    techFuture,
    warmPaper
};

template <>
struct RawValues<CardStyle> {
    static constexpr RawValueTable<CardStyle, 12> table{{{CardStyle::clean, "clean"},
                                                         {CardStyle::elegantShadow, "elegantShadow"},
                                                         {CardStyle::glassmorphism, "glassmorphism"},
                                                         {CardStyle::neumorphism, "neumorphism"},
                                                         {CardStyle::gradientCard, "gradientCard"},
                                                         {CardStyle::darkMode, "darkMode"},
                                                         {CardStyle::businessCard, "businessCard"},
                                                         {CardStyle::artistic, "artistic"},
                                                         {CardStyle::minimal, "minimal"},
                                                         {CardStyle::luxury, "luxury"},
                                                         {CardStyle::techFuture, "techFuture"},
                                                         {CardStyle::warmPaper, "warmPaper"}}};
};

}  // namespace quorvane
