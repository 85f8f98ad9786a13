#pragma once

#include "diagnostics/AppLogger.h"
#include "store/ModelContainer.h"

#include <functional>
#include <string>

/// Opens the one store of the application, whatever it takes.
namespace quorvane::SafeModelContainer {

/// How `sharedContainer` reaches the outside; tests put failing attempts and a harmless end in its place.
struct Environment {
    std::filesystem::path file;  ///< of the store
    AppLogger* logger = nullptr;
    std::function<std::shared_ptr<ModelContainer>(const ModelConfiguration&)> open;  ///< throws `StoreError`
    std::function<void(const std::string& message)> fatal;                           ///< has to end the process
};

/// Sets the environment; to be called once, before the first `sharedContainer()`.
void configure(Environment environment);

/// The shared container. The first call opens it: with the cloud, else without, else in the plainest way. When nothing
/// opens, the process ends with a message that says what to do; no attempt changes or removes anything. From any
/// thread.
[[nodiscard]] ModelContainer& sharedContainer();

/// Drops the shared container and its environment, for the end of a test.
void reset();

/// What the user reads when no attempt succeeded.
[[nodiscard]] std::string fatalMessage(std::string_view lastError);

}  // namespace quorvane::SafeModelContainer
