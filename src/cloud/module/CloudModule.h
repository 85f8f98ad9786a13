#pragma once

#include "platform/RecordContainer.h"

#include <filesystem>
#include <memory>
#include <string>

/// The client of the cloud database lies in a shared object beside the programs and is loaded when somebody has a
/// cloud: with the libraries that it brings it takes 5 MiB, which everybody else would carry all day.
namespace quorvane::CloudModule {

/// The libpq service that leads to the user's records.
inline constexpr const char* serviceName = "quorvane";

/// The cloud of this machine: configured if libpq's files have the service. Where the module can't be loaded then,
/// every session fails and says so.
[[nodiscard]] platform::CloudService cloudService();

/// Where an installation has it: ../lib/quorvane as seen from the program's folder.
[[nodiscard]] std::filesystem::path installedFile();

/// Loads the module and makes a container; one that fails, with the reason, where it can't be loaded.
[[nodiscard]] std::unique_ptr<platform::RecordContainer> load(const std::filesystem::path& file);

/// The name and the type of the one function that the module has. Both are built together, so the types are the same.
inline constexpr const char* entryName = "quorvaneMakeRecordContainer";
using Entry = platform::RecordContainer* (*)();

}  // namespace quorvane::CloudModule
