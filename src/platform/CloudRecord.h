#pragma once

#include "base/Date.h"

#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace quorvane::platform {

/// A record as it travels to and from a cloud database: a type, a name, and values under keys. A key that is missing
/// and a value of an unexpected type mean the same to a reader.
struct CloudRecord {
    using Value = std::variant<std::string, Date, double, bool, std::vector<std::string>>;

    std::string recordType;
    std::string recordName;
    std::map<std::string, Value> values{};

    /// The value under the key, if it is a `T`.
    template <class T>
    [[nodiscard]] std::optional<T> get(const std::string& key) const {
        const auto found = values.find(key);
        if (found == values.end()) return std::nullopt;
        const T* value = std::get_if<T>(&found->second);
        return value ? std::optional<T>(*value) : std::nullopt;
    }

    friend bool operator==(const CloudRecord&, const CloudRecord&) = default;
};

}  // namespace quorvane::platform
