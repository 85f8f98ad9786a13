#pragma once

#include "platform/CloudRecord.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The values of a record as a JSON object. Texts, numbers, truth values and lists of texts are what JSON has; a date
/// is `{"$date":"2026-03-04T15:00:00.000000Z"}`, always in UTC and with six digits: the order of the texts is the order
/// of time.
namespace quorvane::postgresql::RecordJson {

using Values = std::map<std::string, platform::CloudRecord::Value>;

/// What a database can't store is mended: U+0000 is taken out of texts, bytes that are no UTF-8 become U+FFFD. Numbers
/// that JSON doesn't know are left out.
void append(std::string& out, const Values& values);
[[nodiscard]] std::string text(const Values& values);

/// A value of another shape is left out. None if the text is no JSON object; `reason` (if given) then says so in one
/// line, without a word of the text.
[[nodiscard]] std::optional<Values> read(std::string_view json, std::string* reason = nullptr);

/// Texts as a PostgreSQL array.
[[nodiscard]] std::string array(const std::vector<std::string>& elements);

}  // namespace quorvane::postgresql::RecordJson
