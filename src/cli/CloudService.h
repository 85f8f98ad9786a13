#pragma once

#include <functional>
#include <string>

namespace quorvane {
class CloudKitSyncError;
}
namespace quorvane::platform {
class QtRunLoop;
}

/// What the commands share that ask the cloud.
namespace quorvane::cli {

/// What is wrong where libpq's files lack the service, in one line for whoever has to mend it.
[[nodiscard]] std::string missingServiceReason(const std::string& service);

/// Begins work, and serves the loop until the work calls what it is given. An interrupt throws `CommandError`; then
/// whoever does the work has to be destroyed before the loop is.
void runUntilFinished(platform::QtRunLoop& runLoop, const std::function<void(const std::function<void()>&)>& begin);

/// What went wrong, in the user's language, with the cause in brackets if there is one.
[[nodiscard]] std::string reasonOf(const CloudKitSyncError& error);

}  // namespace quorvane::cli
