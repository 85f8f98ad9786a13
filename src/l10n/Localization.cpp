#include "l10n/Localization.h"

#include "base/PreferredLanguages.h"
#include "base/Text.h"
#include "l10n/Catalogue.h"

#include <algorithm>
#include <cassert>
#include <unicode/fmtable.h>
#include <unicode/locid.h>
#include <unicode/msgfmt.h>
#include <unicode/unistr.h>
#include <vector>

namespace quorvane {
namespace {

static_assert(std::ranges::is_sorted(messageSignatures, {}, &MessageSignature::key));

icu::UnicodeString utf16(std::string_view text) {
    return icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
}

/// The catalogue for a tag of any form; none if there is none.
const Catalogue* catalogueFor(std::string_view tag) {
    auto language = text::lowercased(tag.substr(0, tag.find_first_of("_-.@")));
    if (language == "c" || language == "posix") language = "en";
    const auto all = catalogues();
    const auto found = std::ranges::find(all, language, &Catalogue::language);
    return found == all.end() ? nullptr : &*found;
}

}  // namespace

struct Localization::Impl {
    explicit Impl(const Catalogue& texts) : catalogue(texts), locale(std::string(texts.language).c_str()) {}

    icu::MessageFormat& message(std::size_t index) {
        auto& parsed = messages[index];
        if (!parsed) {
            UErrorCode error = U_ZERO_ERROR;
            parsed = std::make_unique<icu::MessageFormat>(utf16(catalogue.messages[index]), locale, error);
            assert(U_SUCCESS(error));
        }
        return *parsed;
    }

    const Catalogue& catalogue;
    icu::Locale locale;
    std::array<std::unique_ptr<icu::MessageFormat>, std::size(messageSignatures)> messages;  ///< null until asked for
};

Localization::Localization(std::string_view language) {
    const auto* catalogue = catalogueFor(language);
    impl_ = std::make_unique<Impl>(catalogue ? *catalogue : catalogues().front());
}

Localization::Localization(Localization&&) noexcept = default;
Localization& Localization::operator=(Localization&&) noexcept = default;
Localization::~Localization() = default;

Localization Localization::fromEnvironment() {
    const auto languages = preferredLanguages();
    const auto found = std::ranges::find_if(languages, catalogueFor);
    return Localization(found == languages.end() ? "" : *found);
}

std::string_view Localization::language() const {
    return impl_->catalogue.language;
}

std::string Localization::formatted(std::size_t index, std::span<const Argument> arguments) const {
    if (arguments.empty()) return std::string(impl_->catalogue.messages[index]);
    std::vector<icu::Formattable> values;
    for (const auto& argument : arguments) {
        if (const auto* words = std::get_if<std::string_view>(&argument)) {
            values.emplace_back(utf16(*words));
        } else if (const auto* whole = std::get_if<std::int64_t>(&argument)) {
            values.emplace_back(*whole);
        } else {
            values.emplace_back(std::get<double>(argument));
        }
    }
    UErrorCode error = U_ZERO_ERROR;
    icu::UnicodeString text;
    icu::FieldPosition nowhere(icu::FieldPosition::DONT_CARE);
    impl_->message(index).format(values.data(), static_cast<std::int32_t>(values.size()), text, nowhere, error);
    assert(U_SUCCESS(error));
    std::string out;
    return text.toUTF8String(out);
}

}  // namespace quorvane
