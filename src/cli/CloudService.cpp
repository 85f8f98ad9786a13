#include "cli/CloudService.h"

#include "cli/CommandContext.h"
#include "cloud/CloudKitSyncError.h"
#include "l10n/Localization.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "platform/linux/loop/UnixSignals.h"

#include <csignal>
#include <fmt/format.h>

namespace quorvane::cli {

std::string missingServiceReason(const std::string& service) {
    return fmt::format("there is no libpq service {} with settings: a section [{}] in ~/.pg_service.conf", service,
                       service);
}

void runUntilFinished(platform::QtRunLoop& runLoop, const std::function<void(const std::function<void()>&)>& begin) {
    bool isFinished = false;
    const platform::UnixSignals signals({SIGINT, SIGTERM, SIGHUP}, [&](int) { runLoop.quit(); });
    begin([&] {
        isFinished = true;
        runLoop.quit();
    });
    runLoop.run();
    if (!isFinished) throw CommandError(ExitStatus::failed, "interrupted");
}

std::string reasonOf(const CloudKitSyncError& error) {
    const auto text = error.text(Localization::fromEnvironment());
    return error.cause().empty() ? text : fmt::format("{} ({})", text, error.cause());
}

}  // namespace quorvane::cli
