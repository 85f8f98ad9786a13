#pragma once

#include "base/Signal.h"
#include "platform/linux/bus/ApplicationRemote.h"
#include "platform/linux/bus/DBusConnection.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quorvane {

/// The one process of this application in a session: the owner of org.zelkor.Quorvane, which answers to
/// org.freedesktop.Application and to an interface of its own. Main thread only; needs the application object.
class SingleInstance {
public:
    enum class Role {
        first,   ///< this process owns the name
        second,  ///< another one does
        unknown  ///< there is no session bus to ask
    };

    /// The bus outlives it.
    explicit SingleInstance(platform::DBusConnection& sessionBus);
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;
    ~SingleInstance();  ///< gives the name back

    [[nodiscard]] Role role() const { return role_; }

    /// Brings the other process's window to the front. `token` is what the desktop gave this start along, may be empty.
    /// False if there is no answer within 3 s.
    [[nodiscard]] bool activateOther(const std::string& token);

    // What others ask for, in a turn of the event loop.
    Signal<> activated;                          ///< also for files: there are none to open
    Signal<const std::string&> actionActivated;  ///< "show", "pause", "start", "quit" or anything else

    /// Pauses recording or starts it, and says what holds then. While it is empty nobody is answered.
    std::function<platform::ApplicationRemote::Recording(bool isOn)> setRecording;

private:
    class ApplicationObject;

    platform::DBusConnection& sessionBus_;
    std::unique_ptr<ApplicationObject> object_;
    Role role_ = Role::unknown;
};

}  // namespace quorvane
