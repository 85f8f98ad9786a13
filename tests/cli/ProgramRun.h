#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace quorvane {

/// How a program is started, beyond its arguments.
struct ProgramSetting {
    std::filesystem::path folder;                      ///< where it runs
    std::string input{};                               ///< its standard input
    std::map<std::string, std::string> environment{};  ///< the whole of it
    std::function<void()> inChild{};                   ///< runs in the new process before the program does
};

/// What a program left behind.
struct ProgramResult {
    int status = -1;  ///< its exit status; 128 and the signal's number if a signal ended it
    std::string out;
    std::string err;
};

/// A program that runs beside the test. It is ended with the object.
class ProgramRun {
public:
    ProgramRun(const std::filesystem::path& program, const std::vector<std::string>& arguments,
               const ProgramSetting& setting);
    ProgramRun(const ProgramRun&) = delete;
    ProgramRun& operator=(const ProgramRun&) = delete;
    ~ProgramRun();

    void sendSignal(int number) const;

    /// Waits until it has written the text to one of its streams; false if it ends before or takes longer than 20 s.
    [[nodiscard]] bool hasWritten(std::string_view text);

    /// Waits for its end.
    [[nodiscard]] ProgramResult wait();

private:
    struct Stream {
        int descriptor = -1;  ///< -1 once the other end is closed
        std::string text;
    };

    /// Takes what comes next; false if nothing will, or nothing did in the time.
    bool read(int milliseconds);

    pid_t process_ = -1;
    Stream out_;
    Stream err_;
};

/// In a new process: gives up the rights of the superuser, who may read and write everything.
void becomeNobody();

/// Lets `becomeNobody` use the file; does nothing where the tests don't run as the superuser.
void giveToNobody(const std::filesystem::path& path);

}  // namespace quorvane
