#pragma once

#include "base/Signal.h"
#include "capture/PermissionChecker.h"
#include "l10n/Localization.h"
#include "platform/Desktop.h"
#include "platform/RunLoop.h"
#include "tracking/ActivityTracker.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

/// What of the user's work can be seen and who tells it: each channel of the desktop, what it answers, since when, when
/// it last told something, and what can be done where it doesn't. Main thread only; what it is made on outlives it.
class CaptureHealthView {
public:
    /// Installs what the desktop needs before it tells, and says how it stands then. Throws `std::runtime_error`.
    using InstallAid = std::function<std::string()>;

    CaptureHealthView(platform::Desktop& desktop, platform::RunLoop& runLoop, ActivityTracker& tracker,
                      PermissionChecker& permissions, const Localization& localization, InstallAid installAid);

    enum class State { works, inPart, missing };

    struct Row {
        State state = State::missing;
        std::string title;
        std::string answer;  ///< who answers and since when, or why nobody does
        std::string remedy;  ///< may be empty
        std::string sign;    ///< how long ago it told something, or the state in a word
        platform::Mend mend = platform::Mend::nothing;
        friend bool operator==(const Row&, const Row&) = default;
    };
    [[nodiscard]] const std::vector<Row>& rows() const { return rows_; }

    /// The worst that is so, in a word and in a sentence.
    [[nodiscard]] State state() const;
    [[nodiscard]] std::string title() const;
    [[nodiscard]] std::string explanation() const;
    [[nodiscard]] platform::Mend mend() const;  ///< what the application can do about that

    /// Asks the desktop anew, which may take a second where it hangs.
    void refresh();

    /// The command that does it, for those who want to see it done.
    static constexpr const char* browserCommand = "quorvane-cli browser install";

    /// How it went, in a word and a sentence.
    struct Outcome {
        std::string title;
        std::string says;
        friend bool operator==(const Outcome&, const Outcome&) = default;
    };
    /// Installs what the desktop needs, with the user's word.
    Outcome installAid();
    /// Switches accessibility on; where that fails the desktop's settings open.
    void grantAccessibility();

    Signal<> changed;

private:
    struct Answer {
        platform::Channel channel;
        Date since;
    };
    [[nodiscard]] Row row(const Answer& answer, Date now) const;
    [[nodiscard]] std::string title(const std::string& question) const;

    platform::Desktop& desktop_;
    platform::RunLoop& runLoop_;
    ActivityTracker& tracker_;
    PermissionChecker& permissions_;
    const Localization& localization_;
    InstallAid installAid_;
    std::map<std::string, Answer> answers_;  ///< by question
    std::vector<Row> rows_;
    std::unique_ptr<platform::WorkItem> first_;
    Subscription health_;
};

}  // namespace quorvane
