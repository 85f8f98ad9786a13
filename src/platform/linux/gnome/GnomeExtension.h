#pragma once

#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>

/// Our extension in GNOME Shell: whether it is there, and how it comes and goes. Each question takes some hundredths of
/// a second, and five seconds if nobody answers. From any thread; needs the application object of Qt.
namespace quorvane::platform::GnomeExtension {

inline constexpr const char* uuid = "focus@quorvane.com";

enum class State : std::uint8_t {
    notInstalled,
    afterLogin,  ///< installed and turned on; the shell looks for new ones when it starts
    off,         ///< installed, and turned off
    stopped,     ///< turned on, and the shell does not run it
    on
};

struct Status {
    State state = State::notInstalled;
    std::filesystem::path folder;  ///< where it is; empty: nowhere
    bool isOfSystem = false;       ///< all users have it, and none of them can remove it
    bool isOutdated = false;       ///< another one than this program brings
    bool isRenewed = false;        ///< the shell runs the former one until the next login
    std::string reason;            ///< why it is `stopped`
};

/// `what()` names the cause in one line.
class Error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Does GNOME Shell run in this session? Where no bus answers the environment says whether it is one of GNOME.
[[nodiscard]] bool isGnome();

/// Throws `Error`, as the others do, where that can't be found out.
[[nodiscard]] Status status();

/// Was the extension written after this session's shell started, so that the shell doesn't know it? By the dates of
/// files, at once.
[[nodiscard]] bool awaitsLogin();

/// Copies the form that fits the shell into the user's folder, unless all users have it or it is there, and turns it
/// on. A shell that runs sees a new extension only after the next login.
Status install();

/// Turns it off and removes the user's copy.
Status remove();

}  // namespace quorvane::platform::GnomeExtension
