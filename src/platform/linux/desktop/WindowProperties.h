#pragma once

#include <string>
#include <sys/types.h>

namespace quorvane::platform {

/// What a window says about the application that it belongs to. What it does not say is empty.
struct WindowProperties {
    std::string instance;          ///< first part of WM_CLASS; users and profiles change it
    std::string wmClass;           ///< second part of WM_CLASS
    std::string kdeDesktopFile;    ///< _KDE_NET_WM_DESKTOP_FILE
    std::string gtkApplicationId;  ///< _GTK_APPLICATION_ID
    pid_t pid = 0;                 ///< 0: unknown

    static constexpr pid_t elsewhere = -1;  ///< the process runs on another machine

    /// Does it not say what it is?
    [[nodiscard]] bool areEmpty() const {
        return instance.empty() && wmClass.empty() && kdeDesktopFile.empty() && gtkApplicationId.empty();
    }
    friend bool operator==(const WindowProperties&, const WindowProperties&) = default;
};

}  // namespace quorvane::platform
