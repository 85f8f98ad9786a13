#include "cloud/module/ServiceFile.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <exception>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace quorvane::ServiceFile {
namespace {

using Path = std::filesystem::path;

constexpr const char* systemFolder = "/etc/postgresql-common";  // as Debian compiles it into libpq
constexpr std::size_t mostBytes = 1 << 20;
constexpr std::string_view blanks = " \t\n\v\f\r";

std::string_view trimmed(std::string_view line) {
    const auto first = line.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return line.substr(first, line.find_last_not_of(blanks) - first + 1);
}

/// None if it can't be read or is no file: a pipe could block whoever opens it.
std::optional<std::string> beginningOf(const Path& file) {
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) return std::nullopt;
    std::string text;
    struct stat status {};
    ssize_t got = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) ? 1 : -1;
    for (std::array<char, 16384> piece{}; got > 0 && text.size() < mostBytes;) {
        got = ::read(descriptor, piece.data(), piece.size());
        if (got < 0 && errno == EINTR)
            got = 1;
        else if (got > 0)
            text.append(piece.data(), static_cast<std::size_t>(got));
    }
    ::close(descriptor);
    return got < 0 ? std::nullopt : std::optional(std::move(text));
}

std::optional<Path> home() {
    if (const char* folder = std::getenv("HOME"); folder && *folder) return folder;
    std::vector<char> buffer(16384);
    passwd entry{};
    passwd* found = nullptr;
    if (::getpwuid_r(::geteuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || !found) return std::nullopt;
    return entry.pw_dir;
}

/// The user's; none: libpq goes on to the system's without a word.
std::optional<Path> userFile() {
    if (const char* file = std::getenv("PGSERVICEFILE")) return file;
    const auto folder = home();
    if (!folder) return std::nullopt;
    std::error_code none;
    Path file = *folder / ".pg_service.conf";
    return std::filesystem::exists(file, none) ? std::optional(file) : std::nullopt;
}

bool isSet(const std::string& name) {
    if (const auto file = userFile()) {
        const auto text = beginningOf(*file);
        if (!text) return false;  // libpq gives up here, too
        const Section found = section(*text, name);
        if (found != Section::missing) return found == Section::filled;
    }
    const char* folder = std::getenv("PGSYSCONFDIR");
    const auto text = beginningOf(Path(folder ? folder : systemFolder) / "pg_service.conf");
    return text && section(*text, name) == Section::filled;
}

}  // namespace

Section section(std::string_view text, std::string_view name) {
    bool isInside = false;
    while (!text.empty()) {
        const auto end = text.find('\n');
        const std::string_view line = trimmed(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (line.empty() || line.front() == '#') continue;
        if (line.front() == '[') {
            if (isInside) return Section::empty;
            const std::string_view rest = line.substr(1);
            isInside = rest.starts_with(name) && rest.substr(name.size()).starts_with(']');
        } else if (isInside) {
            return Section::filled;
        }
    }
    return isInside ? Section::empty : Section::missing;
}

bool hasService(const std::string& name) noexcept {
    try {
        return isSet(name);
    } catch (const std::exception&) {  // no memory
        return false;
    }
}

}  // namespace quorvane::ServiceFile
