#include "support/TemporaryFolder.h"

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace quorvane {

TemporaryFolder::TemporaryFolder() {
    std::string name = std::filesystem::temp_directory_path() / "quorvane-test-XXXXXX";
    if (::mkdtemp(name.data()) == nullptr) throw std::system_error(errno, std::generic_category(), name);
    path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;  // a test may have left a folder that can't be entered
    std::filesystem::remove_all(path_, ignored);
}

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw std::runtime_error("can't read " + file.string());
    return {std::istreambuf_iterator<char>(stream), {}};
}

void writeFile(const std::filesystem::path& file, const std::string& bytes) {
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream << bytes << std::flush;
    if (!stream) throw std::runtime_error("can't write " + file.string());
}

}  // namespace quorvane
