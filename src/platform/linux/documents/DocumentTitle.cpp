#include "platform/linux/documents/DocumentTitle.h"

#include "base/Text.h"

#include <QString>
#include <algorithm>
#include <array>
#include <cstddef>

namespace quorvane::platform::DocumentTitle {
namespace {

constexpr std::size_t longestTitle = 1024;
constexpr std::size_t mostParts = 8;
constexpr std::array<std::string_view, 3> dashes{" - ", " – ", " — "};

/// A dash between two parts of a title.
struct Dash {
    std::size_t begin;
    std::size_t end;
};

std::vector<Dash> dashesOf(std::string_view title) {
    std::vector<Dash> found;
    for (std::size_t at = 0; at < title.size() && found.size() + 1 < mostParts; ++at)
        for (const auto dash : dashes)
            if (title.substr(at).starts_with(dash)) found.push_back({.begin = at, .end = at + dash.size()});
    return found;
}

/// The title without the marks of a changed document, which stand before it.
std::string_view withoutMarks(std::string_view title) {
    constexpr std::array<std::string_view, 4> marks{"*", "●", "•", " "};
    for (bool isMarked = true; isMarked;) {
        isMarked = false;
        for (const auto mark : marks)
            if (title.starts_with(mark)) {
                title.remove_prefix(mark.size());
                isMarked = true;
            }
    }
    return title;
}

/// "name +" and "name *" of a changed document, "name (directory) [Read-Only]".
std::string_view withoutTrailingMarks(std::string_view part) {
    for (const std::string_view mark : {" +", " *", "*"})
        if (part.ends_with(mark)) part.remove_suffix(mark.size());
    if (const auto bracket = part.rfind(" ["); part.ends_with(']') && bracket != std::string_view::npos)
        part = part.substr(0, bracket);
    return part;
}

/// Empty if it is no absolute path.
std::string absolute(std::string_view path, std::string_view home) {
    if (path.starts_with('/')) return std::string(path);
    if (path == "~" || path.starts_with("~/")) return std::string(home) + std::string(path.substr(1));
    return {};
}

class PathCollector {
public:
    explicit PathCollector(std::string_view home) : home_(home) {}

    void addPath(std::string_view path) { add(absolute(path, home_)); }

    void addFile(std::string_view name, std::string_view directory) {
        auto path = absolute(directory, home_);
        if (path.empty() || name.empty() || name.find('/') != std::string_view::npos) return;
        if (!path.ends_with('/')) path += '/';
        add(path + std::string(name));
        add(path + std::string(withoutTrailingMarks(name)));
    }

    [[nodiscard]] std::vector<std::string> take() { return std::move(paths_); }

private:
    void add(const std::string& path) {
        if (!path.empty() && std::find(paths_.begin(), paths_.end(), path) == paths_.end()) paths_.push_back(path);
    }

    std::string_view home_;
    std::vector<std::string> paths_;
};

/// Where the directory begins in "NAME (DIRECTORY)"; npos if the text is none.
std::size_t bracketOf(std::string_view part) {
    return part.ends_with(')') ? std::min(part.find(" (/"), part.find(" (~")) : std::string_view::npos;
}

/// "NAME (DIRECTORY)"
void addBracketed(PathCollector& paths, std::string_view part) {
    part = withoutTrailingMarks(part);
    const auto bracket = bracketOf(part);
    if (bracket == std::string_view::npos) return;
    paths.addFile(part.substr(0, bracket), part.substr(bracket + 2, part.size() - bracket - 3));
}

bool looksLikeFileName(std::string_view name) {
    const auto dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0) return false;
    const auto suffix = QString::fromUtf8(name.substr(dot + 1));
    return !suffix.isEmpty() && suffix.size() <= 8 && suffix[0].isLetter() &&
           std::all_of(suffix.begin(), suffix.end(), [](QChar c) { return c.isLetterOrNumber(); });
}

std::vector<std::string> partsOf(std::string_view title) {
    std::vector<std::string> parts;
    std::size_t begin = 0;
    for (const auto& dash : dashesOf(title)) {
        if (dash.begin < begin) continue;
        parts.push_back(text::trimmed(title.substr(begin, dash.begin - begin)));
        begin = dash.end;
    }
    parts.push_back(text::trimmed(title.substr(begin)));
    return parts;
}

std::string nameIn(std::string_view part) {
    part = withoutTrailingMarks(withoutMarks(part));
    if (const auto bracket = bracketOf(part); bracket != std::string_view::npos)
        part = withoutTrailingMarks(part.substr(0, bracket));
    // A path is named by its last part.
    if (part.starts_with('/') || part.starts_with("~/")) part.remove_prefix(part.rfind('/') + 1);
    return text::trimmed(part);
}

}  // namespace

std::vector<std::string> paths(std::string_view title, std::string_view home) {
    title = withoutMarks(title.substr(0, longestTitle));
    // A name may hold dashes itself, so the longest beginning of the title goes first.
    auto ends = dashesOf(title);
    ends.push_back({.begin = title.size(), .end = title.size()});
    PathCollector paths(home);
    for (auto end = ends.rbegin(); end != ends.rend(); ++end) {
        const auto beginning = title.substr(0, end->begin);
        paths.addPath(beginning);
        paths.addPath(withoutTrailingMarks(beginning));
        addBracketed(paths, beginning);
        for (const auto& dash : ends)
            if (dash.end < end->begin)
                paths.addFile(title.substr(0, dash.begin), title.substr(dash.end, end->begin - dash.end));
    }
    return paths.take();
}

std::string documentName(std::string_view title, const std::vector<std::string>& applicationNames) {
    const auto parts = partsOf(withoutMarks(title.substr(0, longestTitle)));
    const bool endsWithApplication =
        std::any_of(applicationNames.begin(), applicationNames.end(),
                    [&](const auto& name) { return text::equalsIgnoringCase(parts.back(), name); });
    if (endsWithApplication) return parts.size() > 1 ? nameIn(parts.front()) : std::string();
    for (const auto& part : parts)
        if (auto name = nameIn(part); looksLikeFileName(name)) return name;
    return {};
}

bool names(std::string_view title, std::string_view fileName) {
    if (fileName.empty()) return false;
    const auto text = QString::fromUtf8(title.substr(0, longestTitle));
    const auto name = QString::fromUtf8(fileName);
    const auto continuesName = [&](qsizetype at) {
        if (at < 0 || at >= text.size()) return false;
        const auto c = text[at];
        return c.isLetterOrNumber() || c == u'_' || c == u'-' || c == u'.';
    };
    for (auto at = text.indexOf(name); at >= 0; at = text.indexOf(name, at + 1))
        if (!continuesName(at - 1) && !continuesName(at + name.size())) return true;
    return false;
}

}  // namespace quorvane::platform::DocumentTitle
