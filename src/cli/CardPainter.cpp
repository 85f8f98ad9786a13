#include "cli/CardPainter.h"

#include "base/Text.h"
#include "cli/CommandContext.h"
#include "praise/ShareImageConfigJson.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <fmt/format.h>
#include <optional>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace quorvane::cli::CardPainter {
namespace {

constexpr const char* program = "quorvane-card";

[[noreturn]] void fail(const std::string& cause) {
    throw CommandError(ExitStatus::failed, fmt::format("cannot paint the card: {}", cause));
}

/// Beside this program in a build, in libexec once it is installed.
std::filesystem::path programFile() {
    std::error_code error;
    const auto folder = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    for (const auto& file : {folder / program, folder / "../libexec/quorvane" / program})
        if (std::filesystem::exists(file, error)) return file;
    fail(fmt::format("{} is not installed", program));
}

/// A file without a name, for what goes to the other program and what comes back; gone with the object.
class NamelessFile {
public:
    NamelessFile() {
        std::error_code error;
        const auto folder = std::filesystem::temp_directory_path(error);
        if (error) fail(fmt::format("there is no folder for temporary files: {}", error.message()));
        std::string name = (folder / "quorvane-card-XXXXXX").string();
        descriptor_ = ::mkostemp(name.data(), O_CLOEXEC);
        if (descriptor_ < 0) fail(std::generic_category().message(errno));
        ::unlink(name.c_str());
    }
    NamelessFile(const NamelessFile&) = delete;
    NamelessFile& operator=(const NamelessFile&) = delete;
    ~NamelessFile() { ::close(descriptor_); }

    [[nodiscard]] int descriptor() const { return descriptor_; }

    void write(std::string_view bytes) const {
        while (!bytes.empty()) {
            const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
            if (written < 0 && errno == EINTR) continue;
            if (written < 0) fail(std::generic_category().message(errno));
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
        ::lseek(descriptor_, 0, SEEK_SET);
    }

    [[nodiscard]] std::string content() const {
        std::string content;
        std::array<char, 1 << 16> part{};
        ::lseek(descriptor_, 0, SEEK_SET);
        for (;;) {
            const ssize_t count = ::read(descriptor_, part.data(), part.size());
            if (count < 0 && errno == EINTR) continue;
            if (count <= 0) return content;
            content.append(part.data(), static_cast<std::size_t>(count));
        }
    }

private:
    int descriptor_ = -1;
};

/// Runs the program on these as its standard streams. Returns its exit status, 128 and more where a signal ended it.
int run(const std::filesystem::path& file, const NamelessFile& input, const NamelessFile& output,
        const NamelessFile& errors) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input.descriptor(), STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output.descriptor(), STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, errors.descriptor(), STDERR_FILENO);
    std::string name = file.string();
    char* const arguments[] = {name.data(), nullptr};
    pid_t child = 0;
    const int error = ::posix_spawn(&child, name.c_str(), &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) fail(fmt::format("{}: {}", name, std::generic_category().message(error)));
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

/// The last line that it wrote about its failure.
std::string causeIn(const std::string& errors, int status) {
    std::string cause;
    for (std::string& line : text::split(errors, '\n'))
        if (!line.empty()) cause = std::move(line);
    return cause.empty() ? fmt::format("{} ended with status {}", program, status) : cause;
}

}  // namespace

std::string pngOf(const ShareImageConfig& config) {
    const auto file = programFile();
    const NamelessFile input;
    const NamelessFile output;
    const NamelessFile errors;
    input.write(jsonText(jsonOf(config)));
    if (const int status = run(file, input, output, errors); status != 0) fail(causeIn(errors.content(), status));
    return output.content();
}

}  // namespace quorvane::cli::CardPainter
