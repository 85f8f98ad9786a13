#include "capture/ChatTitleSearch.h"

#include "base/Text.h"
#include "capture/AccessibleAttribute.h"
#include "capture/SearchBudget.h"

#include <algorithm>
#include <array>
#include <memory>
#include <unicode/brkiter.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <utility>

namespace quorvane::ChatTitleSearch {
namespace {

using platform::AccessibleElement;
namespace AccessibleName = platform::AccessibleName;

// Both in lower case, as they are compared.
constexpr auto chatApplications = std::to_array<std::string_view>(
    {"com.tencent.xinwechat", "com.tencent.qq", "com.alibaba.dingtalkmac", "com.bytedance.lark",
     "com.tinyspeck.slackmacgap", "com.hnc.discord", "ru.keepcoder.telegram", "com.whatsapp", "com.facebook.archon",
     "com.microsoft.teams", "com.skype.skype", "org.whispersystems.signal-desktop", "com.apple.mobilesms",
     "com.apple.ichat"});
constexpr auto genericTitles = std::to_array<std::string_view>(
    {"wechat", "微信",   "qq",       "钉钉",     "dingtalk", "lark",        "feishu",
     "飞书",   "slack",  "discord",  "telegram", "whatsapp", "teams",       "microsoft teams",
     "skype",  "signal", "messages", "信息",     "聊天",     "conversation"});

constexpr int mostCharacters = 48;

bool hasFewCharacters(const icu::UnicodeString& text) {
    UErrorCode error = U_ZERO_ERROR;
    static const std::unique_ptr<icu::BreakIterator> prototype(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), error));
    const std::unique_ptr<icu::BreakIterator> iterator(prototype->clone());
    iterator->setText(text);
    int characters = 0;
    while (characters <= mostCharacters && iterator->next() != icu::BreakIterator::DONE)
        ++characters;
    return characters <= mostCharacters;
}

/// Marks don't count: an emoji may hold some.
bool hasLetterOrDigit(const icu::UnicodeString& text) {
    for (std::int32_t at = 0; at < text.length(); at = text.moveIndex32(at, 1)) {
        const auto category = U_GET_GC_MASK(text.char32At(at));
        if ((category & (U_GC_L_MASK | U_GC_ND_MASK)) != 0) return true;
    }
    return false;
}

/// One search, which ends after so many elements.
class Search {
public:
    Search(platform::Accessibility& accessibility, std::string_view bundleId, SearchBudget budget)
        : accessibility_(accessibility), bundleId_(bundleId), budget_(std::move(budget)) {}

    std::optional<std::string> from(const AccessibleElement& element, int depth) {
        if (!budget_.visit()) return std::nullopt;
        if (auto text = textOf(element); text && isPlausible(*text, bundleId_)) return text;
        if (depth == 0) return std::nullopt;
        for (const auto& child : AccessibleAttribute::elements(accessibility_, element, AccessibleName::children)) {
            if (auto found = from(child, depth - 1)) return found;
        }
        return std::nullopt;
    }

private:
    /// What stands first on the element; a plausible text behind an implausible one doesn't count.
    std::optional<std::string> textOf(const AccessibleElement& element) {
        for (const auto name : {AccessibleName::title, AccessibleName::value, AccessibleName::description}) {
            auto text = AccessibleAttribute::text(accessibility_, element, name);
            if (text && !text->empty()) return text;
        }
        return std::nullopt;
    }

    platform::Accessibility& accessibility_;
    std::string_view bundleId_;
    SearchBudget budget_;
};

}  // namespace

bool isChatApplication(std::string_view bundleId) {
    return std::ranges::count(chatApplications, text::lowercased(bundleId)) > 0;
}

bool isPlausible(std::string_view text, std::string_view bundleId) {
    const std::string title = text::trimmedWithNewlines(text);
    if (title.empty() || title.find('\n') != std::string::npos) return false;
    const std::string lowercase = text::lowercased(title);
    if (lowercase == text::lowercased(bundleId) || std::ranges::count(genericTitles, lowercase) > 0) return false;
    const auto characters = icu::UnicodeString::fromUTF8(title);
    return hasFewCharacters(characters) && hasLetterOrDigit(characters);
}

std::optional<std::string> find(platform::Accessibility& accessibility, const AccessibleElement& application,
                                const AccessibleElement& window, std::string_view bundleId,
                                const std::stop_token& stop) {
    if (const auto focused = AccessibleAttribute::element(accessibility, application, AccessibleName::focusedElement)) {
        if (auto found = Search(accessibility, bundleId, SearchBudget(stop, 80)).from(*focused, 3)) return found;
    }
    return Search(accessibility, bundleId, SearchBudget(stop, 120)).from(window, 4);
}

}  // namespace quorvane::ChatTitleSearch
