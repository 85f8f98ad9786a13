#include "browserhost/HostRun.h"

#include "browserhost/BrowserSocket.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quorvane {

std::string nativeMessage(std::string_view json) {
    const auto length = static_cast<std::uint32_t>(json.size());
    std::string bytes(sizeof length, '\0');
    std::memcpy(bytes.data(), &length, sizeof length);
    return bytes.append(json);
}

HostRun::HostRun(const std::filesystem::path& runtimeDirectory) {
    std::array<int, 2> in{};
    std::array<int, 2> err{};
    EXPECT_EQ(::pipe2(in.data(), O_CLOEXEC) + ::pipe2(err.data(), O_CLOEXEC), 0);
    std::string variable = "XDG_RUNTIME_DIR=" + runtimeDirectory.string();
    std::array<char*, 2> environment{variable.data(), nullptr};
    process_ = ::fork();
    if (process_ == 0) {
        ::dup2(in[0], STDIN_FILENO);
        ::dup2(err[1], STDERR_FILENO);
        ::execle(QUORVANE_BROWSER_HOST, "quorvane-browser-host", "chrome-extension://id/", nullptr, environment.data());
        ::_exit(127);
    }
    ::close(in[0]);
    ::close(err[1]);
    input_ = in[1];
    err_ = err[0];
    std::signal(SIGPIPE, SIG_IGN);
}

HostRun::~HostRun() {
    if (process_ > 0) {
        ::kill(process_, SIGKILL);
        ::waitpid(process_, nullptr, 0);
    }
    for (const int descriptor : {input_, err_})
        if (descriptor >= 0) ::close(descriptor);
}

bool HostRun::write(std::string_view bytes) const {
    while (!bytes.empty()) {
        const ssize_t written = ::write(input_, bytes.data(), bytes.size());
        if (written < 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

HostRun::Result HostRun::finish() {
    ::close(input_);
    input_ = -1;
    Result result;
    std::array<char, 4096> piece{};
    for (ssize_t got = 0; (got = ::read(err_, piece.data(), piece.size())) > 0;)
        result.err.append(piece.data(), static_cast<std::size_t>(got));
    int waited = 0;
    rusage usage{};
    ::wait4(process_, &waited, 0, &usage);
    process_ = 0;
    result.status = WIFEXITED(waited) ? WEXITSTATUS(waited) : 128 + WTERMSIG(waited);
    result.mostMemory = usage.ru_maxrss;
    return result;
}

ListeningTracker::ListeningTracker(const std::filesystem::path& socket)
    : listener_(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0)) {
    std::filesystem::create_directories(socket.parent_path());
    std::filesystem::remove(socket);
    const auto address = BrowserSocket::address(socket).value();
    EXPECT_EQ(::bind(listener_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(::listen(listener_, 4), 0);
}

ListeningTracker::~ListeningTracker() {
    ::close(listener_);
    if (connection_ >= 0) ::close(connection_);
}

std::string ListeningTracker::next(int milliseconds) {
    const auto isReady = [&](int descriptor) {
        pollfd ready{descriptor, POLLIN, 0};
        return ::poll(&ready, 1, milliseconds) == 1;
    };
    if (connection_ < 0) {
        if (!isReady(listener_)) return "nothing";
        connection_ = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    }
    std::array<char, 1 << 16> packet{};
    if (!isReady(connection_)) return "nothing";
    const ssize_t got = ::recv(connection_, packet.data(), packet.size(), 0);
    return got <= 0 ? "the end" : std::string(packet.data(), static_cast<std::size_t>(got));
}

}  // namespace quorvane
