#include "tracking/AttentionWatch.h"

#include "base/Url.h"
#include "tracking/SteadyTitle.h"

#include <utility>

namespace quorvane {
namespace {

bool isSameTitle(const std::string& a, const std::string& b) {
    return a.empty() || b.empty() || a == b || steadyTitle(a) == steadyTitle(b);
}

bool isSamePage(const std::optional<std::string>& a, const std::optional<std::string>& b) {
    return !a || !b || *a == *b || (urlParts(*a) && urlParts(*a) == urlParts(*b));
}

}  // namespace

bool Attention::isSame(const Attention& other) const {
    return isSameTitle(title, other.title) && isSamePage(page, other.page);
}

void AttentionWatch::begin(Attention attention) {
    shown_ = std::move(attention);
    candidate_.reset();
}

std::optional<ClockLook> AttentionWatch::see(const Attention& attention, const ClockLook& look, Seconds standing) {
    if (attention.isSame(shown_)) {
        candidate_.reset();
        if (shown_.title.empty()) shown_.title = attention.title;
        if (!shown_.page) shown_.page = attention.page;
        return std::nullopt;
    }
    if (!candidate_ || !attention.isSame(candidate_->attention)) {
        candidate_ = Candidate{attention, look};
        return std::nullopt;
    }
    if (look.uptime - candidate_->since.uptime < standing) return std::nullopt;
    return candidate_->since;
}

}  // namespace quorvane
