#pragma once

#include "base/RawValue.h"

namespace quorvane {

/// The languages of praise messages and share cards.
enum class SupportedLanguage {
    chinese,
    english,
    french,
    japanese,
    spanish,
    russian,
    german,
    portuguese,
    korean,
    italian,
    vietnamese,
    arabic
};

template <>
struct RawValues<SupportedLanguage> {
    static constexpr RawValueTable<SupportedLanguage, 12> table{{{SupportedLanguage::chinese, "zh"},
                                                                 {SupportedLanguage::english, "en"},
                                                                 {SupportedLanguage::french, "fr"},
                                                                 {SupportedLanguage::japanese, "ja"},
                                                                 {SupportedLanguage::spanish, "es"},
                                                                 {SupportedLanguage::russian, "ru"},
                                                                 {SupportedLanguage::german, "de"},
                                                                 {SupportedLanguage::portuguese, "pt"},
                                                                 {SupportedLanguage::korean, "ko"},
                                                                 {SupportedLanguage::italian, "it"},
                                                                 {SupportedLanguage::vietnamese, "vi"},
                                                                 {SupportedLanguage::arabic, "ar"}}};
};

/// What the language calls itself.
[[nodiscard]] constexpr std::string_view displayName(SupportedLanguage language) {
    switch (language) {
    case SupportedLanguage::chinese: return "中文";
    case SupportedLanguage::english: return "English";
    case SupportedLanguage::french: return "Français";
    case SupportedLanguage::japanese: return "日本語";
    case SupportedLanguage::spanish: return "Español";
    case SupportedLanguage::russian: return "Русский";
    case SupportedLanguage::german: return "Deutsch";
    case SupportedLanguage::portuguese: return "Português";
    case SupportedLanguage::korean: return "한국어";
    case SupportedLanguage::italian: return "Italiano";
    case SupportedLanguage::vietnamese: return "Tiếng Việt";
    case SupportedLanguage::arabic: return "العربية";
    }
    return {};
}

}  // namespace quorvane
