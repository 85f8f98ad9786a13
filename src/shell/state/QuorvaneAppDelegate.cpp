#include "shell/state/QuorvaneAppDelegate.h"

#include <fmt/format.h>

namespace quorvane {
namespace {

constexpr const char* module = "AppDelegate";

}  // namespace

bool QuorvaneAppDelegate::applicationShouldHandleReopen(ApplicationPresence& application, bool hasVisibleWindows) {
    logger_.log(
        fmt::format("Reopen 事件：hasVisibleWindows={} windows={}", hasVisibleWindows, application.windowCount()),
        LogLevel::info, module);
    application.activateIgnoringOtherApps();
    if (hasVisibleWindows) return true;
    if (application.makeKeyAndOrderFront()) {
        logger_.log("Reopen 已唤起现存 NSWindow", LogLevel::info, module);
        return true;
    }
    quorvaneReopenMain.send();
    logger_.log("Reopen 时无可用窗口，已发 quorvaneReopenMain 通知请求重建", LogLevel::info, module);
    return true;
}

}  // namespace quorvane
