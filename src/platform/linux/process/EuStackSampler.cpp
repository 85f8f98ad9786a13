#include "platform/linux/process/EuStackSampler.h"

#include "platform/Clock.h"
#include "platform/linux/process/TracingChild.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <fcntl.h>
#include <fmt/format.h>
#include <optional>
#include <system_error>
#include <time.h>
#include <unistd.h>
#include <utility>

namespace quorvane::platform {
namespace {

/// What eu-stack ends with when it has shown stacks but not every frame, as on most threads of stripped libraries.
constexpr int incomplete = 1;
/// A tool that is killed at the wrong moment leaves the thread stopped that it was about to read. It needs a fraction
/// of this for one text.
constexpr Seconds grace = 1s;
constexpr Seconds lookInterval = 0.02s;

void pause(Seconds duration) {
    const auto nanoseconds = std::chrono::duration_cast<std::chrono::nanoseconds>(duration).count();
    const timespec time{.tv_sec = nanoseconds / 1'000'000'000, .tv_nsec = nanoseconds % 1'000'000'000};
    ::nanosleep(&time, nullptr);
}

/// One tool after another, all writing to one file.
class EuStackSampling final : public StackSampling {
public:
    EuStackSampling(std::string path, int output, int snapshots)
        : path_(std::move(path)), output_(output), snapshotsLeft_(snapshots) {}
    EuStackSampling(const EuStackSampling&) = delete;
    EuStackSampling& operator=(const EuStackSampling&) = delete;
    ~EuStackSampling() override {
        terminate();
        ::close(output_);
    }

    /// An empty text, or why the tool did not begin.
    [[nodiscard]] std::string startSnapshot() {
        nextSnapshot_ = uptime() + EuStackSampler::snapshotInterval;
        --snapshotsLeft_;
        return child_.start({path_, "-m", "-b", "-p", std::to_string(::getpid())}, output_);
    }

    [[nodiscard]] bool hasEndedWithin(Seconds duration) override {
        for (const auto end = uptime() + duration;;) {
            look();
            if (hasEnded()) return true;
            const auto left = end - uptime();
            if (left <= 0s) return false;
            pause(std::min(left, lookInterval));
        }
    }

    [[nodiscard]] int exitStatus() const override { return hasStacks_ ? 0 : status_; }

    void terminate() override {
        snapshotsLeft_ = 0;
        for (const auto end = uptime() + grace; child_.isRunning() && uptime() < end;) {
            pause(lookInterval);
            look();
        }
        child_.kill();
    }

private:
    [[nodiscard]] bool hasEnded() const { return !child_.isRunning() && snapshotsLeft_ == 0; }

    /// Notes the end of a tool and begins the next when its time has come. The first that fails is the last.
    void look() {
        if (child_.isRunning()) {
            const auto status = child_.poll();
            if (!status) return;
            status_ = *status;
            if (status_ == 0 || status_ == incomplete)
                hasStacks_ = true;
            else
                snapshotsLeft_ = 0;
        }
        if (snapshotsLeft_ > 0 && uptime() >= nextSnapshot_ && !startSnapshot().empty()) snapshotsLeft_ = 0;
    }

    std::string path_;
    int output_;
    int snapshotsLeft_;
    Seconds nextSnapshot_{};
    int status_ = -1;
    bool hasStacks_ = false;
    TracingChild child_;
};

}  // namespace

EuStackSampler::EuStackSampler(const std::string& path)
    : tool_{.name = "eu-stack", .path = path, .format = "linux-eu-stack-v1"} {}

bool EuStackSampler::isInstalled() const {
    return ::access(tool_.path.c_str(), X_OK) == 0;
}

std::variant<std::unique_ptr<StackSampling>, std::string> EuStackSampler::start(int seconds,
                                                                                const std::filesystem::path& output) {
    const int descriptor = ::open(output.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_APPEND | O_CLOEXEC, 0600);
    if (descriptor < 0) return std::generic_category().message(errno);
    const int snapshots = std::max(1, static_cast<int>(std::lround(Seconds(seconds) / snapshotInterval)));
    auto sampling = std::make_unique<EuStackSampling>(tool_.path, descriptor, snapshots);
    if (auto problem = sampling->startSnapshot(); !problem.empty()) return problem;
    return sampling;
}

}  // namespace quorvane::platform
