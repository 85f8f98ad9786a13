#include "cloud/postgresql/RecordJsonReader.h"

#include "base/Iso8601.h"

#include <charconv>
#include <cstdint>
#include <system_error>
#include <unicode/utf16.h>
#include <unicode/utf8.h>
#include <utility>

namespace quorvane::postgresql {

namespace {

/// How deep values may be nested that nobody wants; a hostile one would exhaust the stack.
constexpr int depthLimit = 100;

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Bytes of the character at the beginning, which is not ASCII; 0 if it is no UTF-8.
std::size_t characterLength(std::string_view text) {
    const auto isWithin = [&](std::size_t index, int low, int high) {
        const int byte = index < text.size() ? static_cast<unsigned char>(text[index]) : 0;
        return byte >= low && byte <= high;
    };
    const auto isTail = [&](std::size_t index) { return isWithin(index, 0x80, 0xBF); };
    if (isWithin(0, 0xC2, 0xDF)) return isTail(1) ? 2 : 0;
    const int lead = static_cast<unsigned char>(text[0]);
    if (isWithin(0, 0xE0, 0xEF))  // neither too long a form nor half of a UTF-16 pair
        return isWithin(1, lead == 0xE0 ? 0xA0 : 0x80, lead == 0xED ? 0x9F : 0xBF) && isTail(2) ? 3 : 0;
    if (isWithin(0, 0xF0, 0xF4))
        return isWithin(1, lead == 0xF0 ? 0x90 : 0x80, lead == 0xF4 ? 0x8F : 0xBF) && isTail(2) && isTail(3) ? 4 : 0;
    return 0;
}

void appendCharacter(std::string& text, char32_t character) {
    char bytes[U8_MAX_LENGTH];
    std::int32_t length = 0;
    U8_APPEND_UNSAFE(bytes, length, character);
    text.append(bytes, static_cast<std::size_t>(length));
}

}  // namespace

std::optional<RecordJson::Values> RecordJsonReader::read() {
    RecordJson::Values values;
    std::string key;
    skipBlanks();
    const bool isRead = take('{') && readElements('}', [&] {
                            if (!readText(key)) return false;
                            skipBlanks();
                            if (!take(':')) return false;
                            skipBlanks();
                            return readValue(values, key);
                        });
    skipBlanks();
    if (!isRead || at_ != json_.size()) return std::nullopt;
    return values;
}

/// Of two values under one key the last counts, also when it is none of ours.
bool RecordJsonReader::readValue(RecordJson::Values& values, std::string& key) {
    const auto take = [&](auto&& value) {
        if (value)
            values.insert_or_assign(std::move(key), *std::forward<decltype(value)>(value));
        else
            values.erase(key);
        return true;
    };
    switch (next()) {
    case '"': {
        std::optional<std::string> text(std::in_place);
        return readText(*text) && take(std::move(text));
    }
    case '[': {
        std::optional<std::vector<std::string>> list;
        return readList(list) && take(std::move(list));
    }
    case '{': {
        std::optional<Date> date;
        return readDate(date) && take(date);
    }
    case 't': return this->take("true") && take(std::optional(true));
    case 'f': return this->take("false") && take(std::optional(false));
    case 'n': return this->take("null") && take(std::optional<bool>());
    default: {
        std::optional<double> number;
        return readNumber(number) && take(number);
    }
    }
}

/// None if it holds anything but texts.
bool RecordJsonReader::readList(std::optional<std::vector<std::string>>& list) {
    list.emplace();
    return take('[') && readElements(']', [&] {
               if (next() == '"' && list) return readText(list->emplace_back());
               list.reset();
               return skipValue(2);
           });
}

/// None if it holds anything but one date.
bool RecordJsonReader::readDate(std::optional<Date>& date) {
    int keys = 0;
    return take('{') && readElements('}', [&] {
               if (!readText(scratch_)) return false;
               const bool isDate = ++keys == 1 && scratch_ == "$date";
               skipBlanks();
               if (!take(':')) return false;
               skipBlanks();
               date.reset();
               if (!isDate || next() != '"') return skipValue(2);
               if (!readText(scratch_)) return false;
               date = parseIso8601(scratch_);
               return true;
           });
}

/// None if a double can't hold it.
bool RecordJsonReader::readNumber(std::optional<double>& number) {
    const std::size_t digits = at_ + (next() == '-' ? 1 : 0);
    if (digits >= json_.size() || !isDigit(json_[digits])) return false;
    if (json_[digits] == '0' && digits + 1 < json_.size() && isDigit(json_[digits + 1])) return false;
    double value = 0;
    const auto [end, error] = std::from_chars(json_.data() + at_, json_.data() + json_.size(), value);
    at_ = static_cast<std::size_t>(end - json_.data());
    if (error == std::errc()) number = value;
    return isDigit(json_[at_ - 1]);
}

bool RecordJsonReader::readText(std::string& text) {
    text.clear();
    if (!take('"')) return false;
    std::size_t begin = at_;
    while (at_ < json_.size()) {
        const auto byte = static_cast<unsigned char>(json_[at_]);
        if (byte >= 0x80) {
            const std::size_t length = characterLength(json_.substr(at_));
            if (length == 0) return false;
            at_ += length;
        } else if (byte == '"' || byte == '\\') {
            text.append(json_, begin, at_ - begin);
            ++at_;
            if (byte == '"') return true;
            if (!readEscape(text)) return false;
            begin = at_;
        } else if (byte < 0x20) {
            return false;
        } else {
            ++at_;
        }
    }
    return false;
}

/// Behind the backslash. U+0000, which no text here may hold, is left out.
bool RecordJsonReader::readEscape(std::string& text) {
    constexpr std::string_view names = "\"\\/bfnrt";
    constexpr std::string_view meant = "\"\\/\b\f\n\r\t";
    const char name = next();
    if (const auto known = names.find(name); known != std::string_view::npos) {
        text += meant[known];
        ++at_;
        return true;
    }
    char32_t character = 0;
    if (!take('u') || !readHex(character)) return false;
    if (U16_IS_SURROGATE(character)) {
        char32_t trail = 0;
        if (!U16_IS_SURROGATE_LEAD(character) || !take("\\u") || !readHex(trail) || !U16_IS_TRAIL(trail)) return false;
        character = static_cast<char32_t>(U16_GET_SUPPLEMENTARY(character, trail));
    }
    if (character != 0) appendCharacter(text, character);
    return true;
}

bool RecordJsonReader::readHex(char32_t& unit) {
    if (json_.size() - at_ < 4) return false;
    std::uint32_t value = 0;
    const char* begin = json_.data() + at_;
    const auto [end, error] = std::from_chars(begin, begin + 4, value, 16);
    if (error != std::errc() || end != begin + 4) return false;
    at_ += 4;
    unit = value;
    return true;
}

bool RecordJsonReader::skipValue(int depth) {
    if (depth > depthLimit) return false;
    switch (next()) {
    case '"': return readText(scratch_);
    case '[': return take('[') && readElements(']', [&] { return skipValue(depth + 1); });
    case '{':
        return take('{') && readElements('}', [&] {
                   if (!readText(scratch_)) return false;
                   skipBlanks();
                   if (!take(':')) return false;
                   skipBlanks();
                   return skipValue(depth + 1);
               });
    case 't': return take("true");
    case 'f': return take("false");
    case 'n': return take("null");
    default: {
        std::optional<double> number;
        return readNumber(number);
    }
    }
}

/// Behind the opening bracket: elements with commas between them, and the closing one.
template <class Element>
bool RecordJsonReader::readElements(char end, const Element& element) {
    skipBlanks();
    if (take(end)) return true;
    do {
        skipBlanks();
        if (!element()) return false;
        skipBlanks();
    } while (take(','));
    return take(end);
}

void RecordJsonReader::skipBlanks() {
    while (at_ < json_.size() && (json_[at_] == ' ' || json_[at_] == '\n' || json_[at_] == '\r' || json_[at_] == '\t'))
        ++at_;
}

bool RecordJsonReader::take(char expected) {
    if (at_ >= json_.size() || json_[at_] != expected) return false;
    ++at_;
    return true;
}

bool RecordJsonReader::take(std::string_view expected) {
    if (!json_.substr(at_).starts_with(expected)) return false;
    at_ += expected.size();
    return true;
}

}  // namespace quorvane::postgresql
