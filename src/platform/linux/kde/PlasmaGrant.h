#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace quorvane::platform {

/// Whether KWin tells a program of the windows. It does where a desktop file that runs the program, by its full path,
/// asks for that; of several such files it takes any. What changes here counts from the program's next connection to
/// KWin on.
class PlasmaGrant {
public:
    /// `program` may be a symbolic link; KWin looks where it leads.
    explicit PlasmaGrant(const std::filesystem::path& program);

    /// One for each of our programs that record, as they lie beside the one that runs.
    [[nodiscard]] static std::vector<PlasmaGrant> ofThisInstallation();

    [[nodiscard]] const std::filesystem::path& program() const { return program_; }

    /// Why KWin doesn't tell it; empty where it does.
    [[nodiscard]] std::string problem() const;

    /// Writes a hidden entry of our own for this user, unless KWin tells the program already. What hinders that, if
    /// anything does; nothing is written then.
    [[nodiscard]] std::optional<std::string> install() const;

    /// Takes that entry away, if there is one. What hinders that.
    [[nodiscard]] std::optional<std::string> remove() const;

    /// Our own entry, below "applications" of the user's data, whether it is there or not.
    [[nodiscard]] std::filesystem::path file() const;

private:
    std::filesystem::path program_;
};

}  // namespace quorvane::platform
