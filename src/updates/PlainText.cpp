#include "updates/PlainText.h"

#include "base/Text.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace quorvane {
namespace {

constexpr std::pair<std::string_view, std::string_view> entities[] = {{"&lt;", "<"},  {"&gt;", ">"},   {"&quot;", "\""},
                                                                      {"&#39;", "'"}, {"&nbsp;", " "}, {"&amp;", "&"}};

/// "<li class='x'>" -> "li", "</p>" -> "p".
std::string tagName(std::string_view tag) {
    tag.remove_prefix(std::min(tag.size(), tag.starts_with("</") ? std::size_t{2} : std::size_t{1}));
    return text::lowercased(tag.substr(0, tag.find_first_of(" \t\r\n/>")));
}

bool endsLine(const std::string& name) {
    static const std::vector<std::string> inLine{"a", "abbr", "b", "code", "em", "i", "small", "span", "strong", "u"};
    return !std::ranges::count(inLine, name);
}

/// The end of what begins with "<" and shows nothing: a tag, or a script or style with all that is in it.
std::size_t endOfTag(std::string_view html, std::size_t start) {
    const auto close = html.find('>', start);
    if (close == std::string_view::npos) return html.size();
    const auto name = tagName(html.substr(start, close + 1 - start));
    if ((name != "script" && name != "style") || html[start + 1] == '/') return close + 1;
    const auto end = html.find("</", close);
    return end == std::string_view::npos ? html.size() : end;
}

bool beginsTag(std::string_view html, std::size_t at) {
    if (html[at] != '<' || at + 1 >= html.size()) return false;
    const char next = html[at + 1];
    return next == '/' || next == '!' || next == '?' || (next >= 'a' && next <= 'z') || (next >= 'A' && next <= 'Z');
}

std::string withoutTags(std::string_view html) {
    std::string out;
    for (std::size_t i = 0; i < html.size();) {
        if (beginsTag(html, i)) {
            const auto end = endOfTag(html, i);
            if (endsLine(tagName(html.substr(i, end - i)))) out += '\n';
            i = end;
            continue;
        }
        const auto rest = html.substr(i);
        const auto* const entity =
            std::ranges::find_if(entities, [&](const auto& known) { return rest.starts_with(known.first); });
        const bool isEntity = entity != std::end(entities);
        out += isEntity ? entity->second : rest.substr(0, 1);
        i += isEntity ? entity->first.size() : 1;
    }
    return out;
}

/// Without control characters, of which a text field may make anything.
std::string shown(std::string_view line) {
    std::string out;
    for (const char c : line)
        out += c == 0x7F || (c >= 0 && c < 0x20) ? ' ' : c;
    return text::trimmed(out);
}

}  // namespace

std::string plainText(std::string_view html, std::size_t maximumBytes) {
    std::vector<std::string> lines;
    for (const std::string& line : text::split(withoutTags(html), '\n'))
        if (auto words = shown(line); !words.empty()) lines.push_back(std::move(words));
    auto out = text::joined(lines, "\n");
    if (out.size() <= maximumBytes) return out;
    constexpr std::string_view ellipsis = "…";
    auto end = maximumBytes - std::min(maximumBytes, ellipsis.size());
    while (end > 0 && (static_cast<unsigned char>(out[end]) & 0xC0) == 0x80)
        --end;
    return out.substr(0, end).append(ellipsis);
}

}  // namespace quorvane
