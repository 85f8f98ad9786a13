#include "store/JsonForm.h"

#include "base/Iso8601.h"
#include "base/Text.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <limits>
#include <optional>

namespace quorvane::JsonForm {
namespace {

bool isPlain(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x20 && byte < 0x80 && c != '"' && c != '\\';
}

void appendEscaped(std::string& out, char c) {
    switch (c) {
    case '"': out += "\\\""; return;
    case '\\': out += "\\\\"; return;
    case '\b': out += "\\b"; return;
    case '\f': out += "\\f"; return;
    case '\n': out += "\\n"; return;
    case '\r': out += "\\r"; return;
    case '\t': out += "\\t"; return;
    default: break;
    }
    if (static_cast<unsigned char>(c) < 0x20)
        fmt::format_to(std::back_inserter(out), "\\u{:04x}", static_cast<unsigned char>(c));
    else
        out += c;
}

void appendUuid(std::string& out, const Uuid& uuid) {
    out += '"';
    uuid.appendTo(out);
    out += '"';
}

void appendReal(std::string& out, double number) {
    // JSON has no infinity; the largest number is the nearest that reads back.
    constexpr double largest = std::numeric_limits<double>::max();
    out += text::shortest(std::isnan(number) ? 0.0 : std::clamp(number, -largest, largest));
}

void appendInteger(std::string& out, std::int64_t number) {
    const fmt::format_int digits(number);
    out.append(digits.data(), digits.size());
}

/// A column of a row that is being read.
struct RowColumn {
    const Row& row;
    int column;

    [[nodiscard]] bool isNull() const { return row.isNull(column); }
    [[nodiscard]] std::int64_t integer() const { return row.integer(column); }
    [[nodiscard]] double real() const { return row.real(column); }
    [[nodiscard]] std::string_view text() const { return row.text(column); }
    [[nodiscard]] std::string_view blob() const { return row.blob(column); }
};

/// The same of a value at hand, which is of its column's type.
struct HeldColumn {
    SqlValue value;

    [[nodiscard]] bool isNull() const { return quorvane::isNull(value); }
    [[nodiscard]] std::int64_t integer() const { return std::get<std::int64_t>(value); }
    [[nodiscard]] double real() const { return std::get<double>(value); }
    [[nodiscard]] std::string_view text() const { return std::get<std::string>(value); }
    [[nodiscard]] std::string_view blob() const { return std::get<Blob>(value).bytes; }
};

Uuid uuidOf(std::string_view blob) {
    return ValueTraits<Uuid>::fromSql(Blob{std::string(blob)});
}

void appendUuidList(std::string& out, std::string_view column) {
    out += '[';
    bool isFirst = true;
    for (const Uuid& uuid : ValueTraits<std::vector<Uuid>>::fromSql(std::string(column))) {
        if (!std::exchange(isFirst, false)) out += ',';
        appendUuid(out, uuid);
    }
    out += ']';
}

/// What a value has to be, for a message.
std::string_view expected(AttributeKind kind) {
    switch (kind) {
    case AttributeKind::uuid:
    case AttributeKind::reference: return "a UUID like \"C0FEA20C-DB32-40C6-A0CC-CF6118205BB6\"";
    case AttributeKind::date: return "an instant like \"2026-03-04T15:00:00.000000Z\"";
    case AttributeKind::text: return "a text";
    case AttributeKind::real: return "a number";
    case AttributeKind::integer: return "a whole number";
    case AttributeKind::boolean: return "true or false";
    case AttributeKind::uuidList: return "a list of UUIDs";
    }
    return {};
}

std::optional<SqlValue> readUuid(const std::string& text) {
    const auto uuid = Uuid::parse(text);
    return uuid ? std::optional(ValueTraits<Uuid>::toSql(*uuid)) : std::nullopt;
}

std::optional<SqlValue> readUuidList(const std::vector<std::string>& texts) {
    std::vector<Uuid> uuids;
    for (const std::string& text : texts) {
        const auto uuid = Uuid::parse(text);
        if (!uuid) return std::nullopt;
        uuids.push_back(*uuid);
    }
    return ValueTraits<std::vector<Uuid>>::toSql(uuids);
}

std::optional<SqlValue> readReal(const JsonLine::Value& value) {
    if (const auto* real = std::get_if<double>(&value)) return *real;
    if (const auto* integer = std::get_if<std::int64_t>(&value)) return static_cast<double>(*integer);
    if (const auto* huge = std::get_if<JsonLine::HugeInteger>(&value)) return huge->nearest;
    return std::nullopt;
}

std::optional<SqlValue> readText(AttributeKind kind, const std::string& text) {
    switch (kind) {
    case AttributeKind::uuid:
    case AttributeKind::reference: return readUuid(text);
    case AttributeKind::text: return text;
    case AttributeKind::date:
        if (const auto microseconds = parseIso8601Microseconds(text)) return *microseconds;
        return std::nullopt;
    case AttributeKind::real:
    case AttributeKind::integer:
    case AttributeKind::boolean:
    case AttributeKind::uuidList: return std::nullopt;
    }
    return std::nullopt;
}

std::optional<SqlValue> read(AttributeKind kind, const JsonLine::Value& value) {
    if (const auto* text = std::get_if<std::string>(&value)) return readText(kind, *text);
    if (kind == AttributeKind::real) return readReal(value);
    if (const auto* integer = std::get_if<std::int64_t>(&value); integer && kind == AttributeKind::integer)
        return *integer;
    if (const auto* boolean = std::get_if<bool>(&value); boolean && kind == AttributeKind::boolean)
        return std::int64_t{*boolean};
    if (const auto* list = std::get_if<std::vector<std::string>>(&value); list && kind == AttributeKind::uuidList)
        return readUuidList(*list);
    return std::nullopt;
}

}  // namespace

void appendString(std::string& out, std::string_view text) {
    out += '"';
    while (!text.empty()) {
        const auto plain = static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), isPlain) - text.begin());
        out.append(text.substr(0, plain));
        text.remove_prefix(plain);
        const auto isHigh = [](char c) { return static_cast<unsigned char>(c) >= 0x80; };
        const auto high = static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), isHigh) - text.begin());
        if (high != 0)
            out += text::validUtf8(text.substr(0, high));
        else if (!text.empty())
            appendEscaped(out, text.front());
        text.remove_prefix(std::min(text.size(), std::max<std::size_t>(high, 1)));
    }
    out += '"';
}

namespace {

template <class Column>
void appendColumn(std::string& out, AttributeKind kind, const Column& column, const RowIds& targets) {
    if (column.isNull()) {
        out += "null";
        return;
    }
    switch (kind) {
    case AttributeKind::uuid: appendUuid(out, uuidOf(column.blob())); return;
    case AttributeKind::date:
        out += '"';
        appendIso8601Microseconds(out, column.integer());
        out += '"';
        return;
    case AttributeKind::text: appendString(out, column.text()); return;
    case AttributeKind::real: appendReal(out, column.real()); return;
    case AttributeKind::integer: appendInteger(out, column.integer()); return;
    case AttributeKind::boolean: out += column.integer() != 0 ? "true" : "false"; return;
    case AttributeKind::uuidList: appendUuidList(out, column.text()); return;
    case AttributeKind::reference:
        if (const auto target = targets.find(column.integer()); target != targets.end())
            appendUuid(out, target->second);
        else
            out += "null";
        return;
    }
}

/// `columnOf` gives the column of an attribute by its place among them.
template <class ColumnOf>
void appendColumns(std::string& out, const EntityDescription& entity, const ColumnOf& columnOf, const RowIds& targets) {
    out += R"({"entity":")";
    out += entity.name;
    out += '"';
    for (std::size_t i = 0; i < entity.attributes.size(); ++i) {
        out += ",\"";
        out += entity.attributes[i].name;
        out += "\":";
        appendColumn(out, entity.attributes[i].kind, columnOf(i), targets);
    }
    out += '}';
}

}  // namespace

void appendValue(std::string& out, const AttributeDescription& attribute, const Row& row, int column,
                 const RowIds& targets) {
    appendColumn(out, attribute.kind, RowColumn{row, column}, targets);
}

void appendObject(std::string& out, const EntityDescription& entity, const Row& row, const RowIds& targets) {
    appendColumns(
        out, entity,
        [&](std::size_t i) {
            return RowColumn{row, static_cast<int>(i)};
        },
        targets);
}

void appendObject(std::string& out, const Entity& object, const RowIds& targets) {
    const auto& entity = object.entityDescription();
    appendColumns(
        out, entity, [&](std::size_t i) { return HeldColumn{entity.attributes[i].get(object)}; }, targets);
}

std::vector<std::string> attributeNames(const EntityDescription& entity) {
    std::vector<std::string> names;
    for (const auto& attribute : entity.attributes)
        names.push_back(attribute.name);
    return names;
}

SqlValue readValue(const AttributeDescription& attribute, const JsonLine::Value& value) {
    if (std::holds_alternative<std::nullptr_t>(value)) {
        if (attribute.isOptional) return {};
        throw Error(fmt::format("\"{}\" can't be null", attribute.name));
    }
    if (attribute.kind == AttributeKind::integer && std::holds_alternative<JsonLine::HugeInteger>(value))
        throw Error(fmt::format("\"{}\" is out of the range of 64-bit integers", attribute.name));
    if (auto read = JsonForm::read(attribute.kind, value)) return std::move(*read);
    throw Error(fmt::format("\"{}\" must be {}", attribute.name, expected(attribute.kind)));
}

std::vector<SqlValue> readObject(const EntityDescription& entity, const JsonLine& line) {
    std::vector<SqlValue> values(entity.attributes.size());
    std::vector<bool> isGiven(entity.attributes.size());
    for (const auto& [key, value] : line.members()) {
        if (key == "entity") continue;
        const auto* attribute = entity.attribute(key);
        if (attribute == nullptr) throw Error(fmt::format("{} has no {}", entity.name, quotedForMessage(key)));
        const auto index = static_cast<std::size_t>(attribute - entity.attributes.data());
        values[index] = readValue(*attribute, value);
        isGiven[index] = true;
    }
    std::shared_ptr<const Entity> fresh;  // made only for what is left out
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (isGiven[i]) continue;
        if (!fresh) fresh = entity.make();
        values[i] = entity.attributes[i].get(*fresh);
    }
    return values;
}

}  // namespace quorvane::JsonForm
