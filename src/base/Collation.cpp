#include "base/Collation.h"

#include <unicode/coll.h>

namespace quorvane {

struct Collation::Impl {
    std::unique_ptr<icu::Collator> collator;
};

Collation::Collation(const std::string& language) : impl_(std::make_unique<Impl>()) {
    UErrorCode error = U_ZERO_ERROR;
    impl_->collator.reset(icu::Collator::createInstance(icu::Locale::createCanonical(language.c_str()), error));
    if (U_SUCCESS(error)) impl_->collator->setAttribute(UCOL_NUMERIC_COLLATION, UCOL_ON, error);
}

Collation::Collation(Collation&&) noexcept = default;
Collation::~Collation() = default;

bool Collation::comesBefore(std::string_view a, std::string_view b) const {
    UErrorCode error = U_ZERO_ERROR;
    const auto piece = [](std::string_view text) {
        return icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size()));
    };
    return impl_->collator ? impl_->collator->compareUTF8(piece(a), piece(b), error) == UCOL_LESS : a < b;
}

}  // namespace quorvane
