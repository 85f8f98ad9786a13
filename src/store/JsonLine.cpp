#include "store/JsonLine.h"

#include "base/Text.h"

#include <algorithm>
#include <fmt/format.h>

namespace quorvane {
namespace {

using Parser = nlohmann::json;

constexpr int longestQuote = 80;  // columns

/// Far more than any entity has attributes; it bounds the search for a key that stands twice.
constexpr std::size_t maxMembers = 100;

/// Of "[json.exception.parse_error.101] parse error at line 1, column 5: why" the last part.
std::string reason(std::string_view message) {
    for (const std::string_view end : {"] ", ": "})
        if (const auto at = message.find(end); at != std::string_view::npos) message.remove_prefix(at + end.size());
    return text::fittedTo(text::validUtf8(message), 2 * longestQuote);
}

}  // namespace

class JsonLine::Events final : public nlohmann::json_sax<Parser> {
public:
    explicit Events(std::vector<Member>& members) : members_(members) {}

    bool null() override { return take(nullptr); }
    bool boolean(bool value) override { return take(value); }
    bool number_integer(number_integer_t value) override { return take(std::int64_t{value}); }
    bool number_unsigned(number_unsigned_t value) override {
        if (value > static_cast<number_unsigned_t>(INT64_MAX)) return take(HugeInteger{static_cast<double>(value)});
        return take(static_cast<std::int64_t>(value));
    }
    bool number_float(number_float_t value, const string_t& digits) override {
        if (digits.find_first_of(".eE") == std::string::npos) return take(HugeInteger{value});
        return take(value);
    }
    bool string(string_t& value) override {
        auto* list = depth_ == 2 ? std::get_if<std::vector<std::string>>(&members_.back().value) : nullptr;
        if (list == nullptr) return take(std::move(value));
        list->push_back(std::move(value));
        return true;
    }
    bool binary(binary_t&) override { return take(Nested{}); }

    bool start_object(std::size_t) override {
        if (depth_ != 0) take(Nested{});
        ++depth_;
        return true;
    }
    bool end_object() override {
        --depth_;
        return true;
    }
    bool start_array(std::size_t) override {
        if (depth_ == 1)
            take(std::vector<std::string>());
        else
            take(Nested{});
        ++depth_;
        return true;
    }
    bool end_array() override { return end_object(); }

    bool key(string_t& name) override {
        if (depth_ != 1) return true;
        const bool isKnown =
            std::any_of(members_.begin(), members_.end(), [&](const auto& one) { return one.key == name; });
        if (isKnown) throw Error(fmt::format("the key {} stands twice", quotedForMessage(name)));
        if (members_.size() == maxMembers) throw Error(fmt::format("the object has more than {} keys", maxMembers));
        members_.push_back({std::move(name), nullptr});
        return true;
    }

    bool parse_error(std::size_t position, const std::string&, const Parser::exception& error) override {
        throw Error(fmt::format("this is not JSON (byte {}: {})", position, reason(error.what())));
    }

private:
    /// Stores the value under the last key. Whatever stands deeper makes that key's value a nested one.
    bool take(Value value) {
        if (depth_ == 0) throw Error("this is not an object");
        members_.back().value = depth_ == 1 ? std::move(value) : Value(Nested{});
        return true;
    }

    std::vector<Member>& members_;
    int depth_ = 0;
};

void JsonLine::read(std::string_view line) {
    members_.clear();
    Events events(members_);
    Parser::sax_parse(line.begin(), line.end(), &events);
}

const JsonLine::Value* JsonLine::find(std::string_view key) const {
    const auto found = std::find_if(members_.begin(), members_.end(), [&](const auto& one) { return one.key == key; });
    return found == members_.end() ? nullptr : &found->value;
}

std::string quotedForMessage(std::string_view text) {
    std::string shown = text::validUtf8(text);
    std::replace_if(
        shown.begin(), shown.end(), [](unsigned char c) { return c < 0x20 || c == 0x7F; }, ' ');
    return '"' + text::fittedTo(shown, longestQuote) + '"';
}

}  // namespace quorvane
