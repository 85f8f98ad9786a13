#include "shell/state/CaptureHealthView.h"

#include "base/Text.h"
#include "base/TimeText.h"
#include "shell/state/RecordingState.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace quorvane {
namespace {

using platform::Channel;
using platform::Mend;

/// Since when an answer stands is known from here on; the start itself has other things to do.
constexpr Seconds untilFirstLook = 5s;

/// The questions of a desktop in the words of the catalogues.
struct Title {
    std::string_view question;
    TextKey key;
};
constexpr Title titles[] = {
    {"front window", "channel_front_window"},
    {"front window and activation", "channel_front_window"},
    {"window titles", "channel_titles"},
    {"system idle time", "channel_idle"},
    {"return from an absence", "channel_return"},
    {"key events", "channel_keys"},
    {"button and scroll events", "channel_pointer"},
    {"sleep and wake", "channel_sleep"},
    {"lock and unlock", "channel_lock"},
    {"screens asleep", "channel_screens"},
    {"calls and films", "channel_calls"},
    {"accessibility tree", "channel_accessibility"},
    {"automation", "channel_documents"},
    {"page in front", "channel_pages"},
    {"system log", "channel_log"},
};

CaptureHealthView::State stateOf(const Channel& channel) {
    if (!channel.isAvailable) return CaptureHealthView::State::missing;
    return channel.isPartial() ? CaptureHealthView::State::inPart : CaptureHealthView::State::works;
}

bool isSameAnswer(const Channel& a, const Channel& b) {
    return a.isAvailable == b.isAvailable && a.name == b.name && a.reason == b.reason;
}

}  // namespace

CaptureHealthView::CaptureHealthView(platform::Desktop& desktop, platform::RunLoop& runLoop, ActivityTracker& tracker,
                                     PermissionChecker& permissions, const Localization& localization,
                                     InstallAid installAid)
    : desktop_(desktop), runLoop_(runLoop), tracker_(tracker), permissions_(permissions), localization_(localization),
      installAid_(std::move(installAid)), first_(runLoop.after(untilFirstLook, [this] { refresh(); })),
      health_(tracker.captureHealthChanged.subscribe([this] { refresh(); })) {}

void CaptureHealthView::refresh() {
    const Date now = runLoop_.now();
    std::vector<Row> rows;
    for (Channel& channel : desktop_.channels()) {
        auto& answer = answers_.try_emplace(channel.question, Answer{channel, now}).first->second;
        if (!isSameAnswer(answer.channel, channel)) answer.since = now;
        answer.channel = std::move(channel);
        rows.push_back(row(answer, now));
    }
    if (rows == std::exchange(rows_, rows)) return;
    changed.send();
}

CaptureHealthView::Row CaptureHealthView::row(const Answer& answer, Date now) const {
    const Channel& channel = answer.channel;
    Row row{.state = stateOf(channel), .title = title(channel.question), .remedy = channel.remedy};
    if (!channel.isAvailable || channel.isPartial()) row.mend = channel.mend;
    const std::string who = row.state == State::works ? channel.name : channel.name + ": " + channel.reason;
    row.answer = who + ", " + localization_.text("health_since", sinceText(answer.since));
    const Seconds quiet = channel.lastSign ? now - *channel.lastSign : -1s;
    if (channel.lastSign && quiet < 60s)
        row.sign = localization_.text("health_just_now");
    else if (channel.lastSign)
        row.sign = localization_.text("health_last_sign", lengthText(quiet));
    else
        row.sign = row.state == State::works    ? localization_.text("health_ok")
                   : row.state == State::inPart ? localization_.text("health_in_part")
                                                : localization_.text("health_missing");
    return row;
}

std::string CaptureHealthView::title(const std::string& question) const {
    const auto* const found = std::find_if(std::begin(titles), std::end(titles),
                                           [&](const Title& title) { return title.question == question; });
    return found == std::end(titles) ? question : localization_.text(found->key);
}

CaptureHealthView::State CaptureHealthView::state() const {
    const auto& health = tracker_.captureHealth();
    if (!health.canSee()) return State::missing;
    return missingSight(health, localization_).empty() ? State::works : State::inPart;
}

std::string CaptureHealthView::title() const {
    const auto& health = tracker_.captureHealth();
    if (!health.canSee()) return localization_.text("capture_blind_title");
    const auto missing = missingSight(health, localization_);
    return missing.empty() ? localization_.text("health_all_well") : missing;
}

std::string CaptureHealthView::explanation() const {
    const auto trouble = captureTrouble(tracker_.captureHealth(), localization_);
    std::string reason = trouble.reason;
    const auto last = static_cast<unsigned char>(reason.empty() ? '.' : reason.back());
    if (last < 0x80 && (text::isLetter(last) || text::isDigit(last))) reason += '.';
    if (trouble.remedy.empty()) return reason;
    return reason + localization_.text("sentence_separator") + trouble.remedy;
}

Mend CaptureHealthView::mend() const {
    for (const Channel& channel : desktop_.sight())
        if (channel.gives != platform::Sight::nothing && stateOf(channel) != State::works) return channel.mend;
    return Mend::nothing;
}

CaptureHealthView::Outcome CaptureHealthView::installAid() {
    Outcome outcome;
    try {
        outcome = {localization_.text("health_mend_done"), installAid_()};
        if (tracker_.isTracking()) tracker_.tick();  // which looks what can be seen now
        const bool awaitsLogin = tracker_.captureHealth().obstacle == platform::Obstacle::afterLogin;
        if (awaitsLogin) outcome.says = explanation();
    } catch (const std::runtime_error& error) {
        outcome = {localization_.text("health_mend_failed"), error.what()};
    }
    refresh();
    return outcome;
}

void CaptureHealthView::grantAccessibility() {
    permissions_.requestAccessibilityPermission();
    if (!permissions_.checkAccessibilityPermission()) permissions_.openAccessibilitySettings();
    refresh();
}

}  // namespace quorvane
