#include "store/ValueTraits.h"

#include "base/Json.h"

#include <algorithm>
#include <cmath>

namespace quorvane {

SqlValue ValueTraits<Uuid>::toSql(const Uuid& value) {
    return Blob{std::string(value.bytes().begin(), value.bytes().end())};
}

Uuid ValueTraits<Uuid>::fromSql(const SqlValue& value) {
    const auto* blob = std::get_if<Blob>(&value);
    std::array<std::uint8_t, 16> bytes{};
    if (blob == nullptr || blob->bytes.size() != bytes.size()) return {};
    std::copy(blob->bytes.begin(), blob->bytes.end(), bytes.begin());
    return Uuid(bytes);
}

SqlValue ValueTraits<Date>::toSql(Date value) {
    return microsecondsSince1970(value);
}

Date ValueTraits<Date>::fromSql(const SqlValue& value) {
    return dateFromMicroseconds(ValueTraits<std::int64_t>::fromSql(value));
}

std::string ValueTraits<std::string>::fromSql(const SqlValue& value) {
    const auto* text = std::get_if<std::string>(&value);
    return text ? *text : std::string();
}

SqlValue ValueTraits<double>::toSql(double value) {
    // The database takes what is no number for none, and the column holds no none.
    return std::isnan(value) ? 0.0 : value;
}

double ValueTraits<double>::fromSql(const SqlValue& value) {
    if (const auto* integer = std::get_if<std::int64_t>(&value)) return static_cast<double>(*integer);
    const auto* real = std::get_if<double>(&value);
    return real ? *real : 0.0;
}

std::int64_t ValueTraits<std::int64_t>::fromSql(const SqlValue& value) {
    const auto* integer = std::get_if<std::int64_t>(&value);
    return integer ? *integer : 0;
}

bool ValueTraits<bool>::fromSql(const SqlValue& value) {
    return ValueTraits<std::int64_t>::fromSql(value) != 0;
}

SqlValue ValueTraits<std::vector<Uuid>>::toSql(const std::vector<Uuid>& value) {
    Json list = Json::array();
    for (const Uuid& uuid : value)
        list.push_back(uuid.string());
    return jsonText(list);
}

std::vector<Uuid> ValueTraits<std::vector<Uuid>>::fromSql(const SqlValue& value) {
    std::vector<Uuid> uuids;
    const auto list = parseJson(ValueTraits<std::string>::fromSql(value));
    if (!list || !list->is_array()) return uuids;
    for (const Json& item : *list)
        if (const auto uuid = item.is_string() ? Uuid::parse(item.get<std::string>()) : std::nullopt)
            uuids.push_back(*uuid);
    return uuids;
}

}  // namespace quorvane
