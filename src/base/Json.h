#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

/// JSON whose objects keep the order in which keys were added.
using Json = nlohmann::ordered_json;

/// The text as one JSON value; on failure none, and `error` (if given) says where and why in one line.
[[nodiscard]] std::optional<Json> parseJson(std::string_view text, std::string* error = nullptr);

/// One line without blanks. Bytes that are no UTF-8 become U+FFFD.
[[nodiscard]] std::string jsonText(const Json& value);

/// Indented by two, for people who look at files.
[[nodiscard]] std::string prettyJsonText(const Json& value);

}  // namespace quorvane
