#include "session/CaptureNote.h"

#include "base/Json.h"

#include <algorithm>

namespace quorvane::CaptureNote {
namespace {

constexpr const char* key = "capture.trouble";

std::string textOf(const CaptureHealth& health) {
    if (health.reason.empty()) return {};
    return jsonText({{"sees", static_cast<int>(health.sight)},
                     {"in_part", health.isPartial},
                     {"reason", health.reason},
                     {"remedy", health.remedy}});
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
    const auto sees = json->find("sees");
    const auto inPart = json->find("in_part");
    const int sight = sees != json->end() && sees->is_number_integer() ? sees->get<int>() : 0;
    return CaptureHealth{.sight = static_cast<platform::Sight>(std::clamp(sight, 0, 4)),
                         .isPartial = inPart != json->end() && inPart->is_boolean() && inPart->get<bool>(),
                         .reason = text("reason"),
                         .remedy = text("remedy")};
}

}  // namespace quorvane::CaptureNote
