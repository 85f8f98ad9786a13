#include "cloud/postgresql/RecordJson.h"

#include "base/Iso8601.h"
#include "base/Text.h"
#include "cloud/postgresql/RecordJsonReader.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <iterator>
#include <vector>

namespace quorvane::postgresql::RecordJson {

namespace {

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

void appendText(std::string& out, std::string_view text) {
    std::string mended;
    if (!isAscii(text)) text = mended = text::validUtf8(text);
    out += '"';
    for (const char c : text) {
        switch (c) {
        case '\0': break;
        case '"': out += "\\\""; break;
        case '\\': out += "\\\\"; break;
        case '\n': out += "\\n"; break;
        case '\r': out += "\\r"; break;
        case '\t': out += "\\t"; break;
        default:
            if (static_cast<unsigned char>(c) < 0x20)
                fmt::format_to(std::back_inserter(out), "\\u{:04x}", +c);
            else
                out += c;
        }
    }
    out += '"';
}

struct Writer {
    std::string& out;

    void operator()(const std::string& value) const { appendText(out, value); }
    void operator()(double value) const { fmt::format_to(std::back_inserter(out), "{}", value); }
    void operator()(bool value) const { out += value ? "true" : "false"; }
    void operator()(Date value) const {
        out += "{\"$date\":\"";
        appendIso8601Microseconds(out, value);
        out += "\"}";
    }
    void operator()(const std::vector<std::string>& value) const {
        out += '[';
        for (const std::string& element : value) {
            if (&element != value.data()) out += ',';
            appendText(out, element);
        }
        out += ']';
    }
};

}  // namespace

void append(std::string& out, const Values& values) {
    out += '{';
    const std::size_t first = out.size();
    for (const auto& [key, value] : values) {
        if (const auto* number = std::get_if<double>(&value); number && !std::isfinite(*number)) continue;
        if (out.size() != first) out += ',';
        appendText(out, key);
        out += ':';
        std::visit(Writer{out}, value);
    }
    out += '}';
}

std::string text(const Values& values) {
    std::string out;
    append(out, values);
    return out;
}

std::optional<Values> read(std::string_view json, std::string* reason) {
    RecordJsonReader reader(json);
    auto values = reader.read();
    if (!values && reason) *reason = fmt::format("its fields can't be read as JSON at byte {}", reader.position() + 1);
    return values;
}

std::string array(const std::vector<std::string>& elements) {
    std::size_t size = 2;
    for (const std::string& element : elements)
        size += element.size() + element.size() / 8 + 3;
    std::string out;
    out.reserve(size);
    out += '{';
    for (const std::string& element : elements) {
        if (&element != elements.data()) out += ',';
        out += '"';
        for (const char c : element) {
            if (c == '"' || c == '\\') out += '\\';
            out += c;
        }
        out += '"';
    }
    out += '}';
    return out;
}

}  // namespace quorvane::postgresql::RecordJson
