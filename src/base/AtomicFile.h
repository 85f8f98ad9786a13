#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

namespace quorvane {

/// A file that could not be read or written; `what()` names it and the cause.
class FileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Writes a file so that its path holds either what was there before or the whole new content. The content goes to a
/// private file beside it, which is flushed to disk and renamed by `commit()`. A new file can be read by its owner
/// alone, a replaced one keeps its permissions. A symbolic link is followed. What is no regular file (a pipe, a
/// terminal) is written to directly. Every operation throws `FileError`.
class AtomicFile {
public:
    explicit AtomicFile(const std::filesystem::path& path);
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;
    ~AtomicFile();  ///< Without `commit()` nothing remains of it.

    void write(std::string_view bytes);
    void commit();

private:
    [[noreturn]] void fail() const;
    void flush();

    std::filesystem::path path_;
    std::string temporary_;  ///< empty when written directly
    std::string buffer_;
    int descriptor_ = -1;
};

/// All of `bytes` at `path`, or nothing changed and `FileError`.
void writeFileAtomically(const std::filesystem::path& path, std::string_view bytes);

}  // namespace quorvane
