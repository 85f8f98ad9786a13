#pragma once

#include "base/RawValue.h"
#include "l10n/Localization.h"

#include <array>
#include <string>

namespace quorvane {

/// The sections of the main window, in their order.
enum class MainSection { activity, billing, rules, exporting };

inline constexpr std::array allMainSections{MainSection::activity, MainSection::billing, MainSection::rules,
                                            MainSection::exporting};

template <>
struct RawValues<MainSection> {
    static constexpr RawValueTable<MainSection, 4> table{{{MainSection::activity, "activity"},
                                                          {MainSection::billing, "billing"},
                                                          {MainSection::rules, "rules"},
                                                          {MainSection::exporting, "export"}}};
};

[[nodiscard]] std::string title(MainSection section, const Localization& localization);

/// The icon's name in the icon set.
[[nodiscard]] const char* iconName(MainSection section);

}  // namespace quorvane
