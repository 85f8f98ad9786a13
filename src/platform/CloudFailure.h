#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace quorvane::platform {

/// Why the cloud database did not do what it was asked for. `what()` is one line in English that names the thing and
/// the cause. It never holds anything of a record but its name.
class CloudFailure : public std::runtime_error {
public:
    enum class Kind : std::uint8_t {
        noAccount,       ///< nobody is known there by these settings: password, role, database or schema are missing
        restricted,      ///< the account may read and not write
        outdated,        ///< schema and program are of different versions
        insecure,        ///< the server could not prove who it is
        unreachable,     ///< no connection
        busy,            ///< the server takes nobody now
        lost,            ///< the connection broke; what was under way may have been done or not
        full,            ///< the server has no room left
        timedOut,        ///< no answer in time; what was under way has been called off
        cancelled,       ///< by us
        recordNotFound,  ///< there is no record of the name
        refused,         ///< anything else that the server says no to
    };

    CloudFailure(Kind kind, const std::string& message) : std::runtime_error(message), kind_(kind) {}
    [[nodiscard]] Kind kind() const { return kind_; }

private:
    Kind kind_;
};

}  // namespace quorvane::platform
