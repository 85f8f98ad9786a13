#include "platform/linux/process/ProcessLock.h"

#include "base/Text.h"
#include "platform/linux/system/WholeFile.h"

#include <cerrno>
#include <charconv>
#include <fcntl.h>
#include <fmt/format.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace quorvane::platform {
namespace {

// These locks belong to the open file. Those of flock() do too, but can't be looked at without taking one.
struct flock wholeFileLock() {
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    return lock;
}

ProcessLock::Holder readHolder(const std::filesystem::path& path) {
    const auto lines = text::split(wholeFile(path).value_or(""), '\n');
    ProcessLock::Holder holder;
    const auto& number = lines.front();
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), holder.pid);
    if (error != std::errc() || end != number.data() + number.size() || lines.size() < 2) return {};
    holder.program = text::validUtf8(lines[1]);
    return holder;
}

std::string reasonOf(int error) {
    return std::generic_category().message(error);
}

}  // namespace

std::string ProcessLock::Holder::description() const {
    if (pid == 0) return "another process";
    return program.empty() ? fmt::format("process {}", pid) : fmt::format("{} (process {})", program, pid);
}

std::variant<ProcessLock, ProcessLock::Refusal> ProcessLock::tryAcquire(const std::filesystem::path& path,
                                                                        std::string_view program) {
    ProcessLock lock(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (lock.descriptor_ < 0)
        return Refusal{.reason = fmt::format("cannot open {}: {}", path.string(), reasonOf(errno))};
    auto whole = wholeFileLock();
    if (fcntl(lock.descriptor_, F_OFD_SETLK, &whole) != 0) {
        if (errno != EAGAIN && errno != EACCES)
            return Refusal{.reason = fmt::format("cannot lock {}: {}", path.string(), reasonOf(errno))};
        auto holder = readHolder(path);
        auto reason = holder.description() + " holds it";
        return Refusal{.holder = std::move(holder), .reason = std::move(reason)};
    }
    const auto name = fmt::format("{}\n{}\n", getpid(), program);
    // Without its name on it the lock holds all the same.
    if (ftruncate(lock.descriptor_, 0) == 0) [[maybe_unused]]
        const auto written = write(lock.descriptor_, name.data(), name.size());
    return lock;
}

std::optional<ProcessLock::Holder> ProcessLock::holderOf(const std::filesystem::path& path) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) return std::nullopt;
    auto found = wholeFileLock();
    const bool isHeld = fcntl(descriptor, F_OFD_GETLK, &found) == 0 && found.l_type != F_UNLCK;
    close(descriptor);
    return isHeld ? std::optional(readHolder(path)) : std::nullopt;
}

ProcessLock::ProcessLock(ProcessLock&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}

ProcessLock& ProcessLock::operator=(ProcessLock&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
}

ProcessLock::~ProcessLock() {
    if (descriptor_ >= 0) close(descriptor_);
}

}  // namespace quorvane::platform
