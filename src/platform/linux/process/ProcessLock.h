#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <variant>

namespace quorvane::platform {

/// Says that one process, and no other, works on something: an advisory lock on a file beside it. The lock ends with
/// the object or with the process, however that ends; the file stays and means nothing by itself.
class ProcessLock {
public:
    /// Who holds a lock. A process that has got it this moment may not have written its name yet.
    struct Holder {
        pid_t pid = 0;        ///< 0: unknown
        std::string program;  ///< empty: unknown

        /// "quorvane (process 1234)", "another process".
        [[nodiscard]] std::string description() const;
        friend bool operator==(const Holder&, const Holder&) = default;
    };

    /// Why there is no lock: somebody has it, or the file can't be used.
    struct Refusal {
        std::optional<Holder> holder;
        std::string reason;  ///< one line for people
    };

    /// Never waits. `program` is how this process is called when others ask. The file is created where it is missing.
    [[nodiscard]] static std::variant<ProcessLock, Refusal> tryAcquire(const std::filesystem::path& path,
                                                                       std::string_view program);

    /// Who holds the lock on this file; none if nobody does or the file can't be read. Takes no lock itself, so it
    /// never stands in the way of one.
    [[nodiscard]] static std::optional<Holder> holderOf(const std::filesystem::path& path);
    [[nodiscard]] static bool isHeld(const std::filesystem::path& path) { return holderOf(path).has_value(); }

    ProcessLock(ProcessLock&& other) noexcept;
    ProcessLock& operator=(ProcessLock&& other) noexcept;
    ProcessLock(const ProcessLock&) = delete;
    ProcessLock& operator=(const ProcessLock&) = delete;
    ~ProcessLock();

private:
    explicit ProcessLock(int descriptor) : descriptor_(descriptor) {}

    int descriptor_;
};

}  // namespace quorvane::platform
