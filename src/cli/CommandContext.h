#pragma once

#include "base/Date.h"
#include "store/Database.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

namespace quorvane::cli {

/// How the process ends.
enum class ExitStatus {
    done = 0,
    failed = 1,
    wrongUsage = 2,
    storeUnavailable = 3,
    readerGone = 141,  ///< what a shell says of a program that SIGPIPE ended; without a word
};

/// Ends the command with this status; `what()` is the one line that says what failed and why.
class CommandError : public std::runtime_error {
public:
    CommandError(ExitStatus status, const std::string& message) : std::runtime_error(message), status_(status) {}
    [[nodiscard]] ExitStatus status() const { return status_; }

private:
    ExitStatus status_;
};

enum class StoreAccess {
    read,
    write,
    change,  ///< write, but only to what is there
};

/// Opens a store. What can't be opened is `ExitStatus::storeUnavailable`, but for one to read or change that isn't
/// there: that is an ordinary failure. One to write is made where it is missing.
[[nodiscard]] std::unique_ptr<Database> openStore(const std::filesystem::path& file, StoreAccess access);

/// What all commands share: the options before and after the command's name, and the command that they chose.
struct CommandContext {
    std::optional<std::string> store;  ///< --store; without it the application's own
    bool json = false;
    std::optional<Date> now;
    std::function<void()> command;  ///< set while the line is read, run once all of it has been understood

    [[nodiscard]] std::filesystem::path storeFile() const;

    /// The store, opened; see `openStore`. Where the application's own isn't there yet, the line says why.
    [[nodiscard]] std::unique_ptr<Database> open(StoreAccess access) const;
};

}  // namespace quorvane::cli
