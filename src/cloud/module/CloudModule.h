#pragma once

#include "cloud/module/CloudAdministration.h"
#include "platform/RecordContainer.h"

#include <filesystem>
#include <memory>
#include <string>

/// The client of the cloud database lies in a shared object beside the programs and is loaded when somebody has a
/// cloud: with the libraries that it brings it takes 5 MiB, which everybody else would carry all day.
namespace quorvane::CloudModule {

/// The libpq service that leads to the user's records.
inline constexpr const char* serviceName = "quorvane";

/// What the module offers. Both sides are built together, so that C++ may pass between them.
struct Door {
    std::unique_ptr<platform::RecordContainer> (*makeContainer)();
    std::unique_ptr<CloudAdministration> (*makeAdministration)();
};

/// The module's one symbol: a function that returns `const Door*`.
inline constexpr const char* doorName = "quorvaneCloudDoor";

/// The cloud of this machine: configured if libpq's files have the service. Where the module can't be loaded then,
/// every session fails and says so.
[[nodiscard]] platform::CloudService cloudService();

/// A container of the module in that file; where it can't be loaded, one whose sessions fail and say why.
[[nodiscard]] std::unique_ptr<platform::RecordContainer> containerOf(const std::filesystem::path& module);

/// Throws `platform::CloudFailure` if the module can't be loaded.
[[nodiscard]] std::unique_ptr<CloudAdministration> administration();

/// Makes servers prove who they are, unless a service's settings ask for less: where neither they nor the environment
/// say anything, libpq would talk to anybody. To be called before the first thread starts.
void verifyServersByDefault();

}  // namespace quorvane::CloudModule
