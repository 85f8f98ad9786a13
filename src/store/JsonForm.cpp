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

void appendValue(std::string& out, const AttributeDescription& attribute, const Row& row, int column,
                 const RowIds& targets) {
    if (row.isNull(column)) {
        out += "null";
        return;
    }
    switch (attribute.kind) {
    case AttributeKind::uuid: appendUuid(out, uuidOf(row.blob(column))); return;
    case AttributeKind::date:
        out += '"';
        appendIso8601Microseconds(out, row.integer(column));
        out += '"';
        return;
    case AttributeKind::text: appendString(out, row.text(column)); return;
    case AttributeKind::real: appendReal(out, row.real(column)); return;
    case AttributeKind::integer: appendInteger(out, row.integer(column)); return;
    case AttributeKind::boolean: out += row.integer(column) != 0 ? "true" : "false"; return;
    case AttributeKind::uuidList: appendUuidList(out, row.text(column)); return;
    case AttributeKind::reference:
        if (const auto target = targets.find(row.integer(column)); target != targets.end())
            appendUuid(out, target->second);
        else
            out += "null";
        return;
    }
}

void appendObject(std::string& out, const EntityDescription& entity, const Row& row, const RowIds& targets) {
    out += R"({"entity":")";
    out += entity.name;
    out += '"';
    int column = 0;
    for (const auto& attribute : entity.attributes) {
        out += ",\"";
        out += attribute.name;
        out += "\":";
        appendValue(out, attribute, row, column++, targets);
    }
    out += '}';
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

}  // namespace quorvane::JsonForm
