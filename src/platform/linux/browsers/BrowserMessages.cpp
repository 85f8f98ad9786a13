#include "platform/linux/browsers/BrowserMessages.h"

#include "browserhost/BrowserSocket.h"
#include "platform/linux/browsers/BrowserConnection.h"
#include "platform/linux/browsers/PagesInFront.h"
#include "platform/linux/process/ProcessLock.h"
#include "platform/linux/system/XdgPaths.h"

#include <QSocketNotifier>
#include <algorithm>
#include <cerrno>
#include <fmt/format.h>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <vector>

namespace quorvane::platform {
namespace {

using std::filesystem::path;

constexpr std::size_t mostConnections = 64;
constexpr Seconds patienceWithPages = 0.25s;

/// Why it can't listen.
class CannotListen : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

[[noreturn]] void failWithErrno(const char* what, const path& place) {
    throw CannotListen(fmt::format("cannot {} {}: {}", what, place.string(), std::generic_category().message(errno)));
}

void makePrivate(const path& folder) {
    struct stat status {};
    if (!XdgPaths::createPrivately(folder) || ::lstat(folder.c_str(), &status) != 0) failWithErrno("make", folder);
    if (!S_ISDIR(status.st_mode) || status.st_uid != ::geteuid())
        throw CannotListen(fmt::format("{} is no folder of this user", folder.string()));
    if ((status.st_mode & 077) != 0 && ::chmod(folder.c_str(), 0700) != 0) failWithErrno("make private", folder);
}

/// A socket where a tracker once listened and nobody does now.
bool isStale(const path& socket, const sockaddr_un& address) {
    struct stat status {};
    if (::lstat(socket.c_str(), &status) != 0 || !S_ISSOCK(status.st_mode)) return false;
    const int probe = BrowserSocket::make();
    const bool isRefused = probe >= 0 && !BrowserSocket::connect(probe, address) && errno == ECONNREFUSED;
    if (probe >= 0) ::close(probe);
    return isRefused;
}

bool bindTo(int descriptor, const sockaddr_un& address) {
    return ::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

/// A socket that listens at this place and nowhere else does anybody.
class Listener {
public:
    explicit Listener(path socket) : path_(std::move(socket)) {
        makePrivate(path_.parent_path());
        auto lock = ProcessLock::tryAcquire(path_.parent_path() / "browser.lock", "quorvane");
        if (const auto* refusal = std::get_if<ProcessLock::Refusal>(&lock))
            throw CannotListen("browsers already tell another tracker: " + refusal->reason);
        lock_ = std::get<ProcessLock>(std::move(lock));
        const auto address = BrowserSocket::address(path_);
        if (!address) throw CannotListen(fmt::format("{} is too long for a socket", path_.string()));
        descriptor_ = BrowserSocket::make();
        // The file gets the permissions that the socket has when it is bound.
        if (descriptor_ < 0 || ::fchmod(descriptor_, 0600) != 0 || !take(*address) || ::listen(descriptor_, 16) != 0) {
            const int cause = errno;
            if (descriptor_ >= 0) ::close(descriptor_);
            errno = cause;
            failWithErrno("listen at", path_);
        }
    }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
    ~Listener() {
        ::close(descriptor_);
        ::unlink(path_.c_str());
    }

    [[nodiscard]] int descriptor() const { return descriptor_; }

private:
    [[nodiscard]] bool take(const sockaddr_un& address) const {
        if (bindTo(descriptor_, address)) return true;
        if (errno != EADDRINUSE) return false;
        if (isStale(path_, address)) return ::unlink(path_.c_str()) == 0 && bindTo(descriptor_, address);
        errno = EADDRINUSE;
        return false;
    }

    path path_;
    std::optional<ProcessLock> lock_;
    int descriptor_ = -1;
};

bool isOfSameUser(int descriptor) {
    ucred peer{};
    socklen_t size = sizeof peer;
    return ::getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == ::geteuid();
}

}  // namespace

struct BrowserMessages::Impl {
    void acceptAll();
    void add(int descriptor);
    void remove(const BrowserConnection& connection);
    void complain(const std::string& line);
    void sayOnce(bool& isSaid, const char* line);

    Say say;
    std::string problem;  ///< why it does not listen
    std::string trouble;  ///< what went wrong last with those who told something
    std::thread::id mainThread = std::this_thread::get_id();
    PagesInFront pages;
    std::optional<Listener> listener;
    std::unique_ptr<QSocketNotifier> notifier;
    std::vector<std::unique_ptr<BrowserConnection>> connections;
    bool hasNamedStrangers = false;
    bool hasNamedCrowd = false;
};

void BrowserMessages::Impl::acceptAll() {
    for (;;) {
        const int descriptor = ::accept4(listener->descriptor(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
        if (descriptor < 0 && (errno == EINTR || errno == ECONNABORTED)) continue;
        if (descriptor < 0 && errno == EAGAIN) return;
        if (descriptor < 0) {
            // Without a descriptor to give away the connection stays in the queue and would wake us again and again.
            notifier->setEnabled(false);
            problem = fmt::format("no more browsers are heard: {}", std::generic_category().message(errno));
            return complain(problem);
        }
        add(descriptor);
    }
}

void BrowserMessages::Impl::add(int descriptor) {
    if (!isOfSameUser(descriptor)) {
        ::close(descriptor);
        return sayOnce(hasNamedStrangers, "another user wanted to connect");
    }
    if (connections.size() >= mostConnections) {
        ::close(descriptor);
        return sayOnce(hasNamedCrowd, "too many browsers want to connect");
    }
    connections.push_back(std::make_unique<BrowserConnection>(
        descriptor,
        BrowserConnection::Listener{
            .heard = [this](BrowserConnection& from, BrowserMessage message) { pages.set(&from, std::move(message)); },
            .complained = [this](const std::string& line) { complain(line); },
            .ended = [this](BrowserConnection& connection) { remove(connection); }}));
}

void BrowserMessages::Impl::remove(const BrowserConnection& connection) {
    pages.forget(&connection);
    std::erase_if(connections, [&](const auto& other) { return other.get() == &connection; });
    if (connections.empty()) trouble.clear();
}

void BrowserMessages::Impl::complain(const std::string& line) {
    trouble = line;
    if (say) say("BrowserMessages: " + line);
}

void BrowserMessages::Impl::sayOnce(bool& isSaid, const char* line) {
    if (!isSaid) complain(line);
    isSaid = true;
}

BrowserMessages::BrowserMessages(const std::optional<std::filesystem::path>& socket, Say say)
    : impl_(std::make_unique<Impl>()) {
    impl_->say = std::move(say);
    try {
        if (!socket) throw CannotListen("XDG_RUNTIME_DIR is not set");
        impl_->listener.emplace(*socket);
    } catch (const CannotListen& error) {
        impl_->problem = error.what();
        return;
    }
    impl_->notifier = std::make_unique<QSocketNotifier>(impl_->listener->descriptor(), QSocketNotifier::Read);
    QObject::connect(impl_->notifier.get(), &QSocketNotifier::activated, impl_->notifier.get(),
                     [impl = impl_.get()] { impl->acceptAll(); });
}

BrowserMessages::~BrowserMessages() {
    impl_->notifier.reset();
    impl_->connections.clear();
}

const std::string& BrowserMessages::problem() const {
    return impl_->problem;
}

Channel BrowserMessages::channel() const {
    Channel channel{.question = "page in front", .name = "browser extension", .gives = Sight::pages};
    channel.isAvailable = impl_->problem.empty() && impl_->pages.knows(0);
    if (channel.isAvailable) return channel;
    if (!impl_->problem.empty()) {
        channel.reason = impl_->problem;
        channel.remedy = "Start Quorvane again, in the desktop session and only once.";
    } else {
        channel.reason = "no browser with the extension has connected";
        if (!impl_->trouble.empty()) channel.reason += "; " + impl_->trouble;
        channel.obstacle = Obstacle::noBrowser;
        channel.mend = Mend::browser;
        channel.remedy = "Run quorvane-cli browser install and do what it says; or switch accessibility on.";
    }
    return channel;
}

bool BrowserMessages::knows(std::int64_t processIdentifier) const {
    return impl_->pages.knows(processIdentifier);
}

std::optional<std::string> BrowserMessages::url(std::int64_t processIdentifier, const std::string& windowTitle) {
    const bool mayWait = std::this_thread::get_id() != impl_->mainThread;
    return impl_->pages.url(processIdentifier, windowTitle, mayWait ? patienceWithPages : 0s);
}

bool BrowserMessages::isOrdinary(std::int64_t processIdentifier, const std::string& windowTitle) const {
    return impl_->pages.url(processIdentifier, windowTitle, 0s).has_value();
}

}  // namespace quorvane::platform
