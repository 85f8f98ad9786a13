#pragma once

#include <filesystem>
#include <string>

namespace quorvane {

/// An empty folder of its own for one test; it goes with all that is in it.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    [[nodiscard]] std::filesystem::path operator/(const std::filesystem::path& name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

/// The bytes of a file; it has to exist.
[[nodiscard]] std::string contentOf(const std::filesystem::path& file);

/// Makes the file hold just these bytes.
void writeFile(const std::filesystem::path& file, const std::string& bytes);

}  // namespace quorvane
