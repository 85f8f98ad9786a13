#pragma once

#include "cloud/postgresql/RecordJson.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane::postgresql {

/// Reads the values of one record. A parser of our own, since rows come by the ten thousand and a general one takes
/// thrice the time.
class RecordJsonReader {
public:
    explicit RecordJsonReader(std::string_view json) : json_(json) {}

    /// None if the text is no JSON object, or one with values that are nested absurdly.
    [[nodiscard]] std::optional<RecordJson::Values> read();

    /// How many bytes were understood.
    [[nodiscard]] std::size_t position() const { return at_; }

private:
    bool readValue(RecordJson::Values& values, std::string& key);
    bool readList(std::optional<std::vector<std::string>>& list);
    bool readDate(std::optional<Date>& date);
    bool readNumber(std::optional<double>& number);
    bool readText(std::string& text);
    bool readEscape(std::string& text);
    bool readHex(char32_t& unit);
    bool skipValue(int depth);
    template <class Element>
    bool readElements(char end, const Element& element);

    void skipBlanks();
    [[nodiscard]] char next() const { return at_ < json_.size() ? json_[at_] : '\0'; }
    bool take(char expected);
    bool take(std::string_view expected);

    std::string_view json_;
    std::size_t at_ = 0;
    std::string scratch_;
};

}  // namespace quorvane::postgresql
