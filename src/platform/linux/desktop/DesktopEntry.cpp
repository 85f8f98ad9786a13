#include "platform/linux/desktop/DesktopEntry.h"

#include "base/Environment.h"
#include "base/Text.h"

#include <algorithm>
#include <map>

namespace quorvane::platform {
namespace {

std::string_view withoutBlanks(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

std::string unescaped(std::string_view value) {
    std::string result;
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] != '\\' || i + 1 == value.size()) {
            result += value[i];
            continue;
        }
        switch (value[++i]) {
        case 's': result += ' '; break;
        case 'n': result += '\n'; break;
        case 't': result += '\t'; break;
        case 'r': result += '\r'; break;
        case '\\': result += '\\'; break;
        default: (result += '\\') += value[i];
        }
    }
    return result;
}

/// The words of a command line; only quotes and backslashes have a meaning there.
std::vector<std::string> words(std::string_view command) {
    std::vector<std::string> result;
    std::string word;
    bool isQuoted = false;
    for (std::size_t i = 0; i < command.size(); ++i) {
        if (command[i] == '"') {
            isQuoted = !isQuoted;
        } else if (command[i] == '\\' && i + 1 < command.size()) {
            word += command[++i];
        } else if (command[i] == ' ' && !isQuoted) {
            if (!word.empty()) result.push_back(std::move(word));
            word.clear();
        } else {
            word += command[i];
        }
    }
    if (!word.empty()) result.push_back(std::move(word));
    return result;
}

std::string baseName(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

/// What runs, behind a leading `env NAME=value...`.
std::string programOf(std::string_view exec) {
    const auto command = words(exec);
    auto word = command.begin();
    if (word != command.end() && baseName(*word) == "env")
        word = std::find_if(word + 1, command.end(), [](const std::string& argument) {
            return argument.find('=') == std::string::npos && !argument.starts_with('-');
        });
    return word == command.end() ? std::string() : baseName(*word);
}

/// The pieces of a value that is a list.
std::vector<std::string> listed(std::string_view value, char separator) {
    std::vector<std::string> pieces;
    for (const auto& piece : text::split(value, separator))
        if (const auto name = withoutBlanks(piece); !name.empty()) pieces.emplace_back(name);
    return pieces;
}

bool has(const std::vector<std::string>& pieces, std::string_view piece) {
    return std::find(pieces.begin(), pieces.end(), piece) != pieces.end();
}

using Keys = std::map<std::string_view, std::string_view>;

/// The keys of the group [Desktop Entry]; the first of equal keys counts.
Keys entryKeys(std::string_view text) {
    Keys keys;
    bool isInside = false;
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        const auto line = withoutBlanks(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.starts_with('[')) {
            if (isInside) break;
            isInside = line == "[Desktop Entry]";
        } else if (const auto equals = line.find('='); isInside && equals != std::string_view::npos && line[0] != '#') {
            keys.emplace(withoutBlanks(line.substr(0, equals)), withoutBlanks(line.substr(equals + 1)));
        }
    }
    return keys;
}

std::string valueOf(const Keys& keys, const std::string& key) {
    const auto found = keys.find(key);
    return found == keys.end() ? std::string() : text::validUtf8(unescaped(found->second));
}

}  // namespace

std::optional<DesktopEntry> parseDesktopEntry(std::string_view text, const std::vector<std::string>& locales) {
    const auto keys = entryKeys(text);
    if (valueOf(keys, "Type") != "Application" || valueOf(keys, "Hidden") == "true") return std::nullopt;
    DesktopEntry entry{.name = valueOf(keys, "Name"),
                       .startupWmClass = valueOf(keys, "StartupWMClass"),
                       .program = programOf(valueOf(keys, "Exec")),
                       .icon = valueOf(keys, "Icon"),
                       .isShown = valueOf(keys, "NoDisplay") != "true",
                       .kwinInterfaces = listed(valueOf(keys, "X-KDE-Wayland-Interfaces"), ',')};
    if (const auto command = words(valueOf(keys, "Exec")); !command.empty() && command.front().starts_with('/'))
        entry.executable = command.front();
    const auto onlyIn = listed(valueOf(keys, "OnlyShowIn"), ';');
    entry.isForKde = (onlyIn.empty() || has(onlyIn, "KDE")) && !has(listed(valueOf(keys, "NotShowIn"), ';'), "KDE");
    for (const auto& locale : locales) {
        if (auto name = valueOf(keys, "Name[" + locale + "]"); !name.empty()) {
            entry.name = std::move(name);
            break;
        }
    }
    return entry;
}

std::vector<std::string> desktopEntryLocales() {
    std::string locale;
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        locale = environment(variable);
        if (!locale.empty()) break;
    }
    const auto at = std::min(locale.find('@'), locale.size());
    const std::string modifier = locale.substr(at);
    std::string country = locale.substr(0, at);
    country.resize(std::min(country.find('.'), country.size()));
    const std::string language = country.substr(0, country.find('_'));
    if (language.empty() || language == "C" || language == "POSIX") return {};
    std::vector<std::string> forms;
    for (const auto& form : {country + modifier, country, language + modifier, language})
        if (std::find(forms.begin(), forms.end(), form) == forms.end()) forms.push_back(form);
    return forms;
}

}  // namespace quorvane::platform
