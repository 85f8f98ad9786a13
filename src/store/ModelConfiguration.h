#pragma once

#include <filesystem>

namespace quorvane {

/// Does a store copy its records to the user's cloud database, if this installation has one?
enum class CloudDatabase { automatic, none };

/// How a store is opened.
struct ModelConfiguration {
    std::filesystem::path file;
    bool allowsSave = true;  ///< false: the file is only read, and has to exist
    CloudDatabase cloudDatabase = CloudDatabase::automatic;
};

}  // namespace quorvane
