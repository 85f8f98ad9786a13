#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quorvane {

/// One line of a JSON Lines file, taken apart into its keys and values without a tree in between. Made once and used
/// for line after line.
class JsonLine {
public:
    /// What the rows of a store never hold: an object, a list of anything but texts.
    struct Nested {};
    /// A number without fraction or exponent that no 64-bit integer can hold.
    struct HugeInteger {
        double nearest = 0;
    };
    using Value = std::variant<std::nullptr_t, bool, std::int64_t, double, std::string, std::vector<std::string>,
                               HugeInteger, Nested>;
    struct Member {
        std::string key;
        Value value;
    };

    /// Why a line was refused, in one line for people.
    class Error : public std::runtime_error {
    public:
        using std::runtime_error::runtime_error;
    };

    /// Reads the line; throws `Error` when it is no JSON, no object, or has a key twice.
    void read(std::string_view line);

    /// In the order of the line; empty before the first `read`.
    [[nodiscard]] const std::vector<Member>& members() const { return members_; }

    /// The value under the key; none if the line lacks it.
    [[nodiscard]] const Value* find(std::string_view key) const;

private:
    /// What the parser calls; it says of each event whether to go on.
    class Events;

    std::vector<Member> members_;
};

/// The text between double quotes as a message shows it: control characters as blanks, and not too much of it.
[[nodiscard]] std::string quotedForMessage(std::string_view text);

}  // namespace quorvane
