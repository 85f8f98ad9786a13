#pragma once

#include <cstdint>
#include <string>
#include <variant>

namespace quorvane {

/// Bytes as the database holds them; they order bytewise.
struct Blob {
    std::string bytes;
    friend auto operator<=>(const Blob&, const Blob&) = default;
};

/// A value of one column. The alternatives stand in the order in which the database sorts them.
using SqlValue = std::variant<std::monostate, std::int64_t, double, std::string, Blob>;

[[nodiscard]] inline bool isNull(const SqlValue& value) {
    return std::holds_alternative<std::monostate>(value);
}

/// Below, equal to or above zero, as the database orders the two: nothing, then numbers by size, text and blobs by
/// bytes.
[[nodiscard]] int compare(const SqlValue& a, const SqlValue& b);

}  // namespace quorvane
