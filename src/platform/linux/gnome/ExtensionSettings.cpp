#include "platform/linux/gnome/ExtensionSettings.h"

#include "platform/linux/gnome/ProgramOutput.h"

#include <algorithm>
#include <utility>

namespace quorvane::platform::ExtensionSettings {
namespace {

constexpr const char* enabledList = "enabled-extensions";
constexpr const char* disabledList = "disabled-extensions";

std::string gsettings(QStringList words, const Deadline& deadline) {
    words.insert(1, QStringLiteral("org.gnome.shell"));
    auto output = outputOf("gsettings", words, deadline);
    if (!output.hasSucceeded) throw Error(output.problem);
    return std::move(output.text);
}

std::string quoted(const std::string& uuid) {
    return "'" + uuid + "'";
}

std::string listOf(const std::vector<std::string>& items) {
    if (items.empty()) return "@as []";
    std::string text = "[";
    for (const auto& item : items)
        text += (text.size() > 1 ? ", " : "") + item;
    return text + "]";
}

std::vector<std::string> read(const char* list, const Deadline& deadline) {
    auto all = items(gsettings({QStringLiteral("get"), QString::fromLatin1(list)}, deadline));
    if (!all) throw Error(std::string("gsettings: ") + list + " is no list");
    return std::move(*all);
}

void write(const char* list, const std::vector<std::string>& all, const Deadline& deadline) {
    gsettings({QStringLiteral("set"), QString::fromLatin1(list), QString::fromStdString(listOf(all))}, deadline);
}

bool contains(const std::vector<std::string>& all, const std::string& uuid) {
    return std::ranges::find(all, quoted(uuid)) != all.end();
}

void takeOut(const char* list, const std::string& uuid, const Deadline& deadline) {
    auto all = read(list, deadline);
    if (std::erase(all, quoted(uuid)) > 0) write(list, all, deadline);
}

}  // namespace

std::optional<std::vector<std::string>> items(std::string_view list) {
    const auto begin = list.find('[');
    const auto end = list.rfind(']');
    if (begin == std::string_view::npos || end == std::string_view::npos || end < begin) return std::nullopt;
    list = list.substr(begin + 1, end - begin - 1);
    std::vector<std::string> found;
    for (std::size_t at = 0; (at = list.find_first_of("'\"", at)) != std::string_view::npos;) {
        std::size_t last = at + 1;
        while (last < list.size() && list[last] != list[at])
            last += list[last] == '\\' ? 2 : 1;
        if (last >= list.size()) return std::nullopt;
        found.emplace_back(list.substr(at, last + 1 - at));
        at = last + 1;
    }
    return found;
}

bool isEnabled(const std::string& uuid, const Deadline& deadline) {
    return contains(read(enabledList, deadline), uuid) && !contains(read(disabledList, deadline), uuid);
}

bool areOn(const Deadline& deadline) {
    return gsettings({QStringLiteral("get"), QStringLiteral("disable-user-extensions")}, deadline).starts_with("false");
}

void enable(const std::string& uuid, const Deadline& deadline) {
    takeOut(disabledList, uuid, deadline);
    auto all = read(enabledList, deadline);
    if (contains(all, uuid)) return;
    all.push_back(quoted(uuid));
    write(enabledList, all, deadline);
}

void forget(const std::string& uuid, const Deadline& deadline) {
    takeOut(enabledList, uuid, deadline);
    takeOut(disabledList, uuid, deadline);
}

}  // namespace quorvane::platform::ExtensionSettings
