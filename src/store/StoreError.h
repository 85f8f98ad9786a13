#pragma once

#include <stdexcept>
#include <string>

namespace quorvane {

/// Why the store could not be opened, read or written. `what()` is one line for people that names the file and the
/// cause.
class StoreError : public std::runtime_error {
public:
    enum class Code {
        missing,       ///< there is no such file
        notAFile,      ///< a directory or a device stands there
        noPermission,  ///< the file or its folder can't be entered, read or created
        readOnly,      ///< the file can be read but not written
        notAStore,     ///< some other kind of file
        foreign,       ///< a database, but not one of ours
        newer,         ///< written by a newer version
        damaged,       ///< cut short or overwritten
        busy,          ///< another program keeps it locked
        diskFull,
        failed,  ///< anything else that the database reports
    };

    StoreError(Code code, const std::string& message) : std::runtime_error(message), code_(code) {}
    [[nodiscard]] Code code() const { return code_; }

private:
    Code code_;
};

}  // namespace quorvane
