#include "platform/linux/process/Proc.h"

#include "base/Text.h"
#include "platform/linux/system/WholeFile.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <system_error>

namespace quorvane::platform::Proc {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t mostDescriptors = 4096;
constexpr std::size_t mostChildren = 256;
constexpr std::size_t mostThreads = 256;
constexpr std::size_t mostArguments = 256;
constexpr unsigned lastPseudoTerminalMajor = 143;
constexpr unsigned firstPseudoTerminalMajor = 136;

fs::path directoryOf(pid_t pid) {
    return fs::path("/proc") / std::to_string(pid);
}

template <class Number>
std::optional<Number> numberFrom(std::string_view text) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

/// Calls `visit` with the entries of a directory until there are `most` of them or no more.
template <class Visit>
void forEntries(const fs::path& directory, std::size_t most, Visit visit) {
    std::error_code error;
    auto entry = fs::directory_iterator(directory, error);
    for (; !error && most > 0 && entry != fs::directory_iterator(); entry.increment(error), --most)
        visit(entry->path());
}

fs::path linkTarget(const fs::path& link) {
    std::error_code error;
    auto target = fs::read_symlink(link, error);
    return error ? fs::path() : target;
}

}  // namespace

std::optional<Status> parseStatus(std::string_view line) {
    const auto bracket = line.rfind(')');
    if (bracket == std::string_view::npos || bracket + 2 > line.size()) return std::nullopt;
    // state, parent, group, session, terminal, foreground group
    const auto fields = text::split(line.substr(bracket + 2), ' ');
    if (fields.size() < 6 || fields[0].size() != 1) return std::nullopt;
    const auto session = numberFrom<pid_t>(fields[3]);
    const auto terminal = numberFrom<int>(fields[4]);
    const auto foreground = numberFrom<pid_t>(fields[5]);
    if (!session || !terminal || !foreground) return std::nullopt;
    return Status{.state = fields[0][0],
                  .session = *session,
                  .terminal = static_cast<unsigned>(*terminal),
                  .foreground = *foreground};
}

std::optional<Status> status(pid_t pid) {
    const auto line = wholeFile(directoryOf(pid) / "stat");
    return line ? parseStatus(text::trimmedWithNewlines(*line)) : std::nullopt;
}

bool hasEnded(pid_t pid) {
    if (const auto known = status(pid)) return known->state == 'Z' || known->state == 'X';
    return kill(pid, 0) != 0 && errno == ESRCH;
}

std::optional<unsigned> pseudoTerminal(unsigned device) {
    const unsigned major = (device >> 8) & 0xfff;
    if (major < firstPseudoTerminalMajor || major > lastPseudoTerminalMajor) return std::nullopt;
    return (device & 0xff) | ((device >> 12) & 0xfff00);
}

std::vector<pid_t> children(pid_t pid) {
    std::vector<pid_t> found;
    forEntries(directoryOf(pid) / "task", mostThreads, [&](const fs::path& thread) {
        for (const auto& number : text::split(wholeFile(thread / "children").value_or(""), ' '))
            if (const auto child = numberFrom<pid_t>(number); child && found.size() < mostChildren)
                found.push_back(*child);
    });
    return found;
}

fs::path workingDirectory(pid_t pid) {
    return linkTarget(directoryOf(pid) / "cwd");
}

std::vector<std::string> arguments(pid_t pid) {
    auto parts = text::split(beginningOfFile(directoryOf(pid) / "cmdline", 65536).value_or(""), '\0');
    if (!parts.empty() && parts.back().empty()) parts.pop_back();
    if (parts.size() > mostArguments) parts.resize(mostArguments);
    return parts;
}

std::vector<std::string> programNames(pid_t pid) {
    std::vector<std::string> names;
    const auto add = [&names](const std::string& name) {
        if (name.size() >= 2 && std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
    };
    const auto program = linkTarget(directoryOf(pid) / "exe").filename();
    add(program.string());
    add(program.stem().string());  // "soffice.bin" is started as "soffice"
    const auto parts = arguments(pid);
    if (!parts.empty()) add(fs::path(parts[0]).filename().string());
    if (parts.size() > 1 && parts[1].starts_with("/usr/")) add(fs::path(parts[1]).filename().string());
    return names;
}

std::vector<fs::path> openPaths(pid_t pid) {
    std::vector<fs::path> paths;
    forEntries(directoryOf(pid) / "fd", mostDescriptors, [&](const fs::path& descriptor) {
        const auto& number = descriptor.filename().native();
        if (number == "0" || number == "1" || number == "2") return;
        auto target = linkTarget(descriptor);
        const auto& path = target.native();
        if (path.starts_with('/') && !path.starts_with("/dev/") && !path.starts_with("/proc/") &&
            !path.starts_with("/memfd:"))
            paths.push_back(std::move(target));
    });
    return paths;
}

}  // namespace quorvane::platform::Proc
