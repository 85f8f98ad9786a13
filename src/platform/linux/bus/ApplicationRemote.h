#pragma once

#include <string>
#include <variant>

/// The application that runs in this session, as other programs reach it over the session bus. Nothing here starts one;
/// each question waits 3 s at most. Needs the application object of Qt.
namespace quorvane::platform::ApplicationRemote {

// Where it answers. `controlInterface` has two methods, "Pause" and "Start", without arguments. Each returns what holds
// afterwards, "bs": `Recording`.
inline constexpr const char* service = "org.zelkor.Quorvane";
inline constexpr const char* path = "/org/zelkor/Quorvane";
inline constexpr const char* applicationInterface = "org.freedesktop.Application";
inline constexpr const char* controlInterface = "org.zelkor.Quorvane1";

struct Recording {
    bool isOn = false;
    std::string hindrance;  ///< why it is on and nothing is recorded at this moment; empty: nothing stands in the way
    friend bool operator==(const Recording&, const Recording&) = default;
};

enum class Failure {
    noBus,          ///< there is no session bus
    notThere,       ///< nobody on the bus is the application
    noAnswer,       ///< it is there, and did not answer in time
    notUnderstood,  ///< it is there, and of a version that doesn't know the question
};

/// Pauses recording, or starts it, and hears what holds then. It is no failure if that held before.
[[nodiscard]] std::variant<Recording, Failure> setRecording(bool isOn);

struct Done {};

/// Brings a window to the front. `token` is what the desktop gave this process along for the focus, may be empty. It
/// answers before the window is there.
[[nodiscard]] std::variant<Done, Failure> show(const std::string& token);

}  // namespace quorvane::platform::ApplicationRemote
