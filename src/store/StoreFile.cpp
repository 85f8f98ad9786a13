#include "store/StoreFile.h"

#include "store/Schema.h"
#include "store/StoreError.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <fcntl.h>
#include <fmt/format.h>
#include <memory>
#include <sqlite3.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <vector>

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

using Header = std::array<unsigned char, headerSize>;

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
    for (int i = 0; i < count; ++i)
        number = number << 8 | bytes[i];
    return number;
}

/// Where the file really is: its log lies there, and not beside a link.
std::filesystem::path target(const std::filesystem::path& file) {
    std::error_code error;
    const auto canonical = std::filesystem::canonical(file, error);
    return error ? std::filesystem::absolute(file) : canonical;
}

/// The first `size` bytes of the file. SQLite's own layer reads them: closing a descriptor of ours would end the locks
/// of every connection that this process has to the file (https://www.sqlite.org/howtocorrupt.html, section 2.2).
Header readHeader(const std::filesystem::path& file, std::size_t size) {
    sqlite3_vfs* system = sqlite3_vfs_find(nullptr);
    const std::string path = target(file).string();  // this layer follows no links
    const std::unique_ptr<const char, void (*)(const char*)> name(
        sqlite3_create_filename(path.c_str(), "", "", 0, nullptr),
        [](const char* held) { sqlite3_free_filename(held); });
    std::vector<std::max_align_t> memory(static_cast<std::size_t>(system->szOsFile) / sizeof(std::max_align_t) + 1);
    auto* opened = reinterpret_cast<sqlite3_file*>(memory.data());
    if (system->xOpen(system, name.get(), opened, SQLITE_OPEN_READONLY | SQLITE_OPEN_MAIN_DB, nullptr) != SQLITE_OK)
        refuse(Code::noPermission, file, "the file can't be opened");
    Header header{};
    const int result = opened->pMethods->xRead(opened, header.data(), static_cast<int>(size), 0);
    opened->pMethods->xClose(opened);
    if (result != SQLITE_OK) refuse(Code::failed, file, "the file can't be read");
    return header;
}

void checkHeader(const std::filesystem::path& file, const Header& header) {
    if (bigEndian(header.data() + applicationIdAt, 4) != static_cast<std::uint32_t>(Schema::applicationId))
        refuse(Code::foreign, file, "this is a database of another program");
    if (static_cast<std::int32_t>(bigEndian(header.data() + userVersionAt, 4)) > Schema::userVersion)
        refuse(Code::newer, file, "a newer version of the program wrote this store");
    const std::uint32_t stored = bigEndian(header.data() + pageSizeAt, 2);
    const std::uint64_t pageSize = stored == 1 ? 65536 : stored;
    const std::uint64_t pages = bigEndian(header.data() + pageCountAt, 4);
    // After the header, which another program may be writing together with the pages: a file only grows.
    std::error_code error;
    const std::uint64_t fileSize = std::filesystem::file_size(file, error);
    // While changes wait in the log, a copy of them into the file may have been interrupted; the log completes it.
    if (!error && fileSize < pages * pageSize && !hasPendingLog(file))
        refuse(Code::damaged, file,
               fmt::format("the file is damaged: {} of {} bytes are there", fileSize, pages * pageSize));
}

void requireWritable(const std::filesystem::path& file) {
    if (::access(file.c_str(), W_OK) != 0) refuse(Code::readOnly, file, "the file is read-only");
    if (!isFolderWritable(file)) refuse(Code::readOnly, file, "nothing can be written into the folder of the file");
}

}  // namespace

State inspect(const ModelConfiguration& configuration) {
    const auto& file = configuration.file;
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0) {
        if (errno != ENOENT) refuseErrno(file, errno);
        if (::lstat(file.c_str(), &status) == 0 && S_ISLNK(status.st_mode))
            refuse(Code::missing, file, "this link leads to a file that isn't there");
        if (!configuration.allowsSave) refuse(Code::missing, file, "there is no such store");
        return State::missing;
    }
    if (S_ISDIR(status.st_mode)) refuse(Code::notAFile, file, "this is a directory, not a store");
    if (!S_ISREG(status.st_mode)) refuse(Code::notAFile, file, "this is not a regular file");

    if (::access(file.c_str(), R_OK) != 0) refuseErrno(file, errno);
    if (configuration.allowsSave) requireWritable(file);
    if (status.st_size == 0) {
        if (!configuration.allowsSave) refuse(Code::notAStore, file, "the file is empty");
        if (hasPendingLog(file)) refuse(Code::damaged, file, "the file is damaged: it is empty, but its log is not");
        return State::empty;
    }
    const auto size = static_cast<std::uint64_t>(status.st_size);
    const Header header = readHeader(file, std::min<std::uint64_t>(size, headerSize));
    if (std::memcmp(header.data(), magic.data(), std::min<std::uint64_t>(size, magic.size())) != 0)
        refuse(Code::notAStore, file, "this is not a store");
    if (size < headerSize) refuse(Code::damaged, file, "the file is damaged: its header is cut short");
    checkHeader(file, header);
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

void make(const std::filesystem::path& file) {
    const int descriptor = ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (descriptor >= 0)
        ::close(descriptor);
    else if (errno != EEXIST)
        refuseErrno(file, errno);
}

OpeningLock::OpeningLock(const std::filesystem::path& file)
    : folder_(::open(target(file).parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (folder_ >= 0) ::flock(folder_, LOCK_EX);
}

OpeningLock::~OpeningLock() {
    if (folder_ >= 0) ::close(folder_);
}

bool hasPendingLog(const std::filesystem::path& file) {
    struct stat log {};
    return ::stat((target(file).string() + "-wal").c_str(), &log) == 0 && log.st_size > 0;
}

bool isWritable(const std::filesystem::path& file) {
    return ::access(file.c_str(), W_OK) == 0 && isFolderWritable(file);
}

bool isFolderWritable(const std::filesystem::path& file) {
    return ::access(target(file).parent_path().c_str(), W_OK | X_OK) == 0;
}

}  // namespace quorvane::StoreFile
