#include "support/OtherProcess.h"

#include <array>
#include <cerrno>
#include <exception>
#include <grp.h>
#include <stdexcept>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace quorvane {
namespace {

constexpr uid_t nobody = 65534;

std::string resultOf(const std::function<std::string()>& work, OtherProcess::As as) {
    if (as == OtherProcess::As::nobody && ::geteuid() == 0 &&
        (::setgroups(0, nullptr) != 0 || ::setgid(nobody) != 0 || ::setuid(nobody) != 0))
        return "can't become another user";
    try {
        return work();
    } catch (const std::exception& error) {
        return error.what();
    }
}

}  // namespace

OtherProcess::OtherProcess(const std::function<std::string()>& work, As as) {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) throw std::system_error(errno, std::generic_category(), "pipe");
    pid_ = ::fork();
    if (pid_ < 0) throw std::system_error(errno, std::generic_category(), "fork");
    if (pid_ == 0) {
        ::close(ends[0]);
        const std::string result = resultOf(work, as);
        const auto written = ::write(ends[1], result.data(), result.size());
        ::_exit(written == static_cast<ssize_t>(result.size()) ? 0 : 1);
    }
    ::close(ends[1]);
    output_ = ends[0];
}

OtherProcess::~OtherProcess() {
    if (pid_ > 0) (void)wait();
}

std::string OtherProcess::wait() {
    std::string result;
    std::array<char, 4096> buffer{};
    for (ssize_t got = 0; (got = ::read(output_, buffer.data(), buffer.size())) > 0;)
        result.append(buffer.data(), static_cast<std::size_t>(got));
    ::close(output_);
    int status = 0;
    ::waitpid(pid_, &status, 0);
    pid_ = 0;
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        throw std::runtime_error("the other process ended badly: " + result);
    return result;
}

}  // namespace quorvane
