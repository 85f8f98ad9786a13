#include "browserhost/TabReport.h"

#include "base/Json.h"

#include <fmt/format.h>
#include <stdexcept>

namespace quorvane {
namespace {

/// What is wrong with a message. It tells nothing of what stands in it, which is private.
class Refused : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The text cut to so many bytes, but never inside a character.
std::string bounded(std::string text, std::size_t length) {
    if (text.size() <= length) return text;
    const auto isContinuation = [&](std::size_t at) { return (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80; };
    while (length > 0 && isContinuation(length))
        --length;
    text.resize(length);
    return text;
}

std::string textOf(const Json& message, const char* key, std::size_t longest) {
    const auto found = message.find(key);
    if (found == message.end()) throw Refused(fmt::format("it has no \"{}\"", key));
    if (!found->is_string()) throw Refused(fmt::format("\"{}\" is no text", key));
    return bounded(found->get<std::string>(), longest);
}

TabReport reportOf(const Json& message) {
    if (!message.is_object()) throw Refused("it is no object");
    const auto version = message.find("v");
    if (version == message.end() || *version != 1) throw Refused("\"v\" is not 1");
    const auto isPrivate = message.find("private");
    if (isPrivate != message.end() && !isPrivate->is_boolean()) throw Refused("\"private\" is neither true nor false");
    if (isPrivate != message.end() && isPrivate->get<bool>()) return {.isPrivate = true};
    return {.url = textOf(message, "url", TabReport::longestUrl),
            .title = textOf(message, "title", TabReport::longestTitle)};
}

}  // namespace

std::optional<TabReport> parseTabReport(std::string_view message, std::string* problem) {
    try {
        const auto parsed = parseJson(message);
        if (!parsed) throw Refused("it is no JSON");
        return reportOf(*parsed);
    } catch (const Refused& refused) {
        if (problem) *problem = refused.what();
        return std::nullopt;
    }
}

std::string BrowserMessage::text() const {
    Json message{{"v", 1}, {"pid", browser}};
    if (page.isPrivate) {
        message["private"] = true;
    } else {
        message["url"] = page.url;
        message["title"] = page.title;
    }
    return jsonText(message);
}

std::optional<BrowserMessage> parseBrowserMessage(std::string_view text) {
    const auto parsed = parseJson(text);
    if (!parsed || !parsed->is_object()) return std::nullopt;
    const auto browser = parsed->find("pid");
    // A number beyond the range would wrap around into it.
    if (browser == parsed->end() || !browser->is_number_unsigned() || browser->get<std::uint64_t>() > INT32_MAX ||
        browser->get<std::int64_t>() == 0)
        return std::nullopt;
    try {
        return BrowserMessage{.browser = browser->get<std::int64_t>(), .page = reportOf(*parsed)};
    } catch (const Refused&) {
        return std::nullopt;
    }
}

}  // namespace quorvane
