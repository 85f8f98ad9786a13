#pragma once

#include "base/Signal.h"
#include "base/Weak.h"
#include "diagnostics/AppLogger.h"
#include "diagnostics/ApplicationInfo.h"
#include "platform/HttpClient.h"
#include "platform/RunLoop.h"
#include "platform/UserDefaults.h"
#include "updates/UpdateFeed.h"
#include "updates/UpdateState.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace quorvane {

/// Looks for new versions: shortly after the launch and then once a day, and whenever the user asks. It offers what a
/// feed with the right signature tells of; it never loads or installs anything. Without a feed it makes no request, no
/// client and no timer; under a test host it does nothing at all. A feed that is refused is one line in the log.
/// Main thread only.
class ZelkorUpdateController {
public:
    static constexpr Seconds launchDelay = 10s;  ///< the launch has better to do
    static constexpr Seconds lookInterval = 1h;  ///< how often it is seen whether a day has passed, asleep or awake
    static constexpr Seconds checkInterval = 24h;
    static constexpr Seconds requestTimeout = 30s;  ///< of the feed, and of its signature
    static constexpr const char* lastCheckKey = "zelkor.update.lastCheck";
    static constexpr const char* skippedVersionKey = "zelkor.update.skippedVersion";

    /// What is referred to outlives the controller.
    struct Parts {
        platform::RunLoop& runLoop;
        platform::UserDefaults& defaults;
        AppLogger& logger;
        ApplicationInfo application{};
        std::string feedHost{};   ///< `Deployment::updateHost`; empty: there is no feed
        std::string publicKey{};  ///< `Deployment::updatePublicKey`
        std::function<std::unique_ptr<platform::HttpClient>()> makeHttpClient{};  ///< called before the first request
    };
    explicit ZelkorUpdateController(Parts parts);

    /// Begins to look by itself. A further call does nothing.
    void startIfNeeded();

    /// Looks now, for the user: `state` will tell an outcome, also of a version that was skipped.
    void checkForUpdates();

    /// Does not offer the version at hand by itself any more.
    void skipVersion();

    /// The user has seen the outcome: back to `idle`.
    void dismiss();

    [[nodiscard]] const UpdateState& state() const { return state_; }
    Signal<> changed;  ///< of the state

    [[nodiscard]] bool hasFeed() const { return feedURLString().has_value(); }
    [[nodiscard]] std::optional<std::string> feedURLString() const;

private:
    using Answer = void (ZelkorUpdateController::*)(const platform::HttpResult&);

    [[nodiscard]] bool isCheckDue() const;
    void checkIfDue();
    void check(bool isAsked);
    void fetch(const std::string& url, std::size_t maximumBytes, Answer answer);
    void noteFeed(const platform::HttpResult& answer);
    void noteSignature(const platform::HttpResult& answer);
    void finish(const UpdateFeed::Outcome& outcome);
    void setState(UpdateState state);

    Parts parts_;
    UpdateState state_;
    bool hasStarted_ = false;
    std::optional<Date> lastCheck_;  ///< also where defaults can't be written
    std::string feed_;               ///< unverified, while its signature is fetched
    std::unique_ptr<platform::HttpClient> client_;
    std::unique_ptr<platform::HttpExchange> exchange_;
    std::unique_ptr<platform::WorkItem> launchCheck_;
    std::unique_ptr<platform::Timer> look_;
    WeakSource<ZelkorUpdateController> weak_{*this};
};

}  // namespace quorvane
