#include "base/AtomicFile.h"

#include <cerrno>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace quorvane {
namespace {

constexpr std::size_t bufferSize = 1 << 16;

namespace fs = std::filesystem;

/// Where writing to `path` ends up, also through a link to what does not exist yet.
fs::path withoutLinks(fs::path path) {
    std::error_code error;
    if (fs::exists(path, error)) {
        auto target = fs::canonical(path, error);
        return error ? path : target;  // /dev/stdout may lead to a pipe, which has no path of its own
    }
    constexpr int mostLinks = 40;
    for (int followed = 0; followed < mostLinks && fs::is_symlink(path, error); ++followed) {
        const auto target = fs::read_symlink(path, error);
        path = path.parent_path() / target;
    }
    return path;
}

}  // namespace

AtomicFile::AtomicFile(const std::filesystem::path& path) : path_(withoutLinks(path)) {
    std::error_code error;
    const auto status = fs::status(path_, error);
    if (status.type() == fs::file_type::none) {
        errno = error.value();
        fail();
    }
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        descriptor_ = ::open(path_.c_str(), O_WRONLY | O_CLOEXEC);
    } else {
        temporary_ = path_.string() + ".XXXXXX";
        descriptor_ = ::mkostemp(temporary_.data(), O_CLOEXEC);
        if (descriptor_ < 0) temporary_.clear();
    }
    if (descriptor_ < 0) fail();
    // Not every file system has permissions; where they can't be set, the new file stays private.
    if (fs::is_regular_file(status)) ::fchmod(descriptor_, static_cast<mode_t>(status.permissions() & fs::perms::all));
}

AtomicFile::~AtomicFile() {
    if (descriptor_ >= 0) ::close(descriptor_);
    if (!temporary_.empty()) ::unlink(temporary_.c_str());
}

void AtomicFile::write(std::string_view bytes) {
    buffer_ += bytes;
    if (buffer_.size() >= bufferSize) flush();
}

void AtomicFile::flush() {
    std::string_view rest = buffer_;
    while (!rest.empty()) {
        const ssize_t written = ::write(descriptor_, rest.data(), rest.size());
        if (written < 0) {
            if (errno == EINTR) continue;
            fail();
        }
        rest.remove_prefix(static_cast<std::size_t>(written));
    }
    buffer_.clear();
}

void AtomicFile::commit() {
    flush();
    if (temporary_.empty()) return;
    if (::fsync(descriptor_) != 0) fail();
    if (::rename(temporary_.c_str(), path_.c_str()) != 0) fail();
    temporary_.clear();
}

void AtomicFile::fail() const {
    throw FileError(fmt::format("cannot write {}: {}", path_.string(), std::generic_category().message(errno)));
}

void writeFileAtomically(const std::filesystem::path& path, std::string_view bytes) {
    AtomicFile file(path);
    file.write(bytes);
    file.commit();
}

}  // namespace quorvane
