#include "store/StoreFile.h"

#include "store/Schema.h"
#include "store/StoreError.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace quorvane::StoreFile {
namespace {

using Code = StoreError::Code;

// The first bytes of an SQLite file (https://www.sqlite.org/fileformat.html, "The Database Header").
constexpr std::size_t headerSize = 100;
constexpr std::string_view magic{"SQLite format 3\0", 16};
constexpr std::size_t pageSizeAt = 16;
constexpr std::size_t pageCountAt = 28;
constexpr std::size_t userVersionAt = 60;
constexpr std::size_t applicationIdAt = 68;

[[noreturn]] void refuse(Code code, const std::filesystem::path& file, std::string_view cause) {
    throw StoreError(code, fmt::format("{}: {}", file.string(), cause));
}

[[noreturn]] void refuseErrno(const std::filesystem::path& file, int error) {
    const Code code = error == EACCES || error == EPERM ? Code::noPermission
                      : error == ENOTDIR                ? Code::notAFile
                      : error == ENOSPC                 ? Code::diskFull
                      : error == EROFS                  ? Code::readOnly
                                                        : Code::failed;
    refuse(code, file, std::generic_category().message(error));
}

std::uint32_t bigEndian(const unsigned char* bytes, int count) {
    std::uint32_t number = 0;
    for (int i = 0; i < count; ++i) number = number << 8 | bytes[i];
    return number;
}

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number_ >= 0) ::close(number_);
    }
    [[nodiscard]] int get() const { return number_; }

private:
    int number_;
};

bool hasPendingLog(const std::filesystem::path& file) {
    struct stat log {};
    return ::stat((file.string() + "-wal").c_str(), &log) == 0 && log.st_size > 0;
}

void checkHeader(const std::filesystem::path& file, const unsigned char* header, std::uint64_t fileSize) {
    if (bigEndian(header + applicationIdAt, 4) != static_cast<std::uint32_t>(Schema::applicationId))
        refuse(Code::foreign, file, "this is a database of another program");
    if (static_cast<std::int32_t>(bigEndian(header + userVersionAt, 4)) > Schema::userVersion)
        refuse(Code::newer, file, "a newer version of the program wrote this store");
    const std::uint32_t stored = bigEndian(header + pageSizeAt, 2);
    const std::uint64_t pageSize = stored == 1 ? 65536 : stored;
    const std::uint64_t pages = bigEndian(header + pageCountAt, 4);
    // While changes wait in the log, a copy of them into the file may have been interrupted; the log completes it.
    if (fileSize < pages * pageSize && !hasPendingLog(file))
        refuse(Code::damaged, file,
               fmt::format("the file is damaged: {} of {} bytes are there", fileSize, pages * pageSize));
}

void requireWritable(const std::filesystem::path& file) {
    if (::access(file.c_str(), W_OK) != 0) refuse(Code::readOnly, file, "the file is read-only");
    const auto folder = file.parent_path().empty() ? std::filesystem::path(".") : file.parent_path();
    if (::access(folder.c_str(), W_OK | X_OK) != 0)
        refuse(Code::readOnly, file, "nothing can be written into the folder of the file");
}

}  // namespace

State inspect(const ModelConfiguration& configuration) {
    const auto& file = configuration.file;
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0) {
        if (errno != ENOENT) refuseErrno(file, errno);
        if (!configuration.allowsSave) refuse(Code::missing, file, "there is no such store");
        return State::missing;
    }
    if (S_ISDIR(status.st_mode)) refuse(Code::notAFile, file, "this is a directory, not a store");
    if (!S_ISREG(status.st_mode)) refuse(Code::notAFile, file, "this is not a regular file");

    const Descriptor descriptor(::open(file.c_str(), O_RDONLY | O_CLOEXEC));
    if (descriptor.get() < 0) refuseErrno(file, errno);
    if (configuration.allowsSave) requireWritable(file);
    if (status.st_size == 0) {
        if (!configuration.allowsSave) refuse(Code::notAStore, file, "the file is empty");
        return State::empty;
    }
    std::array<unsigned char, headerSize> header{};
    const ssize_t got = ::pread(descriptor.get(), header.data(), header.size(), 0);
    if (got < 0) refuseErrno(file, errno);
    const auto compared = std::min(static_cast<std::size_t>(got), magic.size());
    if (std::memcmp(header.data(), magic.data(), compared) != 0) refuse(Code::notAStore, file, "this is not a store");
    if (got < static_cast<ssize_t>(header.size())) refuse(Code::damaged, file, "the file is damaged: its header is cut short");
    checkHeader(file, header.data(), static_cast<std::uint64_t>(status.st_size));
    return State::store;
}

void makeFolder(const std::filesystem::path& file) {
    std::filesystem::path made;
    for (const auto& piece : file.parent_path()) {
        made /= piece;
        if (::mkdir(made.c_str(), 0700) == 0 || errno == EEXIST) continue;
        struct stat status {};
        const int error = errno;
        if (::stat(made.c_str(), &status) != 0) refuseErrno(file, error);
    }
}

}  // namespace quorvane::StoreFile
