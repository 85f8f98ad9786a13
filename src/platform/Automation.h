#pragma once

#include "platform/Channel.h"

#include <optional>
#include <string>
#include <variant>

namespace quorvane::platform {

/// What a script asks of another application. The answer is a text.
enum class ScriptFamily {
    browserURL,           ///< the address of the front tab
    frontDocumentPath,    ///< the path of the front document, else its name
    frontDocumentName,    ///< the name of the front document
    currentTrack,         ///< the name of the track that plays
    officeDocument,       ///< the path of the active document, else its name
    developmentDocument,  ///< the path of the front document of a development environment, else its name
    frontFolder,          ///< the folder of the front window
    permissionTest        ///< nothing; shows whether scripts may be sent at all
};

/// A script to one application. Where applications understand scripts, `source` is one; elsewhere a channel answers
/// what the family asks.
struct Script {
    ScriptFamily family = ScriptFamily::permissionTest;
    std::string applicationName;   ///< as the script addresses it
    std::string bundleIdentifier;  ///< of the application that it is for; empty for a family of browsers
    std::string source;
    friend bool operator==(const Script&, const Script&) = default;
};

/// Why a script did not run to its end.
struct ScriptError {
    int number = 0;  ///< -600: the application can't be reached; -1728: it can't answer
    std::string message;
    friend bool operator==(const ScriptError&, const ScriptError&) = default;
};
using ScriptResult = std::variant<std::string, ScriptError>;

/// Puts questions to other applications. From any thread; blocks, but not for more than a second.
class Automation {
public:
    virtual ~Automation() = default;

    [[nodiscard]] virtual ScriptResult run(const Script& script) = 0;

    /// The address of the front tab, if the browser in front has told it by itself. Asks nobody and comes back at once.
    [[nodiscard]] virtual std::optional<std::string> toldAddress() { return std::nullopt; }

    /// The well-known application in whose way this one is asked; itself unless the platform knows another.
    [[nodiscard]] virtual std::string scriptIdentity(const std::string& bundleIdentifier) { return bundleIdentifier; }

    [[nodiscard]] virtual Channel channel() = 0;
};

}  // namespace quorvane::platform
