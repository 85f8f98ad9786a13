#pragma once

#include <stdexcept>
#include <string>
#include <vector>

/// What has to be installed in a desktop before it tells which window is in front.
namespace quorvane::platform::DesktopAids {

struct Status {
    std::string state;  ///< for machines: "not_installed", "after_login", "off", "stopped", "on"
    std::string says;   ///< for people, and what is left to do
    std::string file;   ///< where it is; may be empty
};

/// The functions throw `Error`, whose text names the cause in one line.
class Error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct Aid {
    const char* desktop;
    const char* name;
    bool (*isForThisSession)();
    Status (*status)();
    Status (*install)();  ///< asks nothing; no more than says so where it is there already
    Status (*remove)();
};

/// Those that help in this session.
[[nodiscard]] std::vector<Aid> here();

/// Why none of them is for this session.
[[nodiscard]] std::string reasonForNone();

}  // namespace quorvane::platform::DesktopAids
