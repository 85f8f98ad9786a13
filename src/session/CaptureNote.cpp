#include "session/CaptureNote.h"

#include "base/Json.h"

namespace quorvane::CaptureNote {
namespace {

constexpr const char* key = "capture.trouble";

std::string textOf(const CaptureHealth& health) {
    if (health.canSee()) return {};
    return jsonText({{"reason", health.reason}, {"remedy", health.remedy}});
}

}  // namespace

void keep(ModelContext& store, const CaptureHealth& health) {
    const auto text = textOf(health);
    if (store.note(key).value_or("") != text) store.setNote(key, text);
}

std::optional<CaptureHealth> kept(ModelContext& store) {
    const auto note = store.note(key);
    const auto json = note && !note->empty() ? parseJson(*note) : std::nullopt;
    if (!json || !json->is_object()) return std::nullopt;
    const auto text = [&](const char* name) {
        const auto found = json->find(name);
        return found != json->end() && found->is_string() ? found->get<std::string>() : std::string();
    };
    return CaptureHealth{.reason = text("reason"), .remedy = text("remedy")};
}

}  // namespace quorvane::CaptureNote
