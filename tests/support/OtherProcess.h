#pragma once

#include <functional>
#include <string>
#include <sys/types.h>
#include <type_traits>

namespace quorvane {

/// A forked process that runs `work` while this one goes on. What it returns, or the text of the exception that ended
/// it, comes back.
class OtherProcess {
public:
    /// Whose rights it has: those of this process, or those of a user who owns nothing and may do nothing special.
    enum class As { sameUser, nobody };

    explicit OtherProcess(const std::function<std::string()>& work, As as = As::sameUser);
    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;
    ~OtherProcess();

    /// Waits for its end.
    [[nodiscard]] std::string wait();

private:
    pid_t pid_ = 0;
    int output_ = -1;
};

/// Runs `work` in a forked process to its end.
template <class Work>
std::string inOtherProcess(Work work, OtherProcess::As as = OtherProcess::As::sameUser) {
    if constexpr (std::is_void_v<std::invoke_result_t<Work>>) {
        return OtherProcess([&] { return work(), std::string(); }, as).wait();
    } else {
        return OtherProcess(work, as).wait();
    }
}

}  // namespace quorvane
