#include "base/PreferredLanguages.h"

#include "base/Environment.h"
#include "base/Text.h"

#include <string_view>

namespace quorvane {
namespace {

std::string languageOf(std::string_view locale) {
    auto language = text::lowercased(locale.substr(0, locale.find_first_of("_-.@")));
    return language == "c" || language == "posix" ? "en" : language;
}

}  // namespace

std::vector<std::string> preferredLanguages() {
    std::vector<std::string> languages;
    if (const auto list = environment("LANGUAGE"); !list.empty()) {
        for (const std::string& entry : text::split(list, ':'))
            languages.push_back(languageOf(entry));
        return languages;
    }
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (const auto locale = environment(name); !locale.empty()) return {languageOf(locale)};
    return languages;
}

}  // namespace quorvane
