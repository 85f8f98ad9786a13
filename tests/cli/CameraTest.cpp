#include "base/Iso8601.h"
#include "base/Json.h"
#include "cli/CliFixture.h"
#include "desktop/support/ChildProcess.h"
#include "desktop/support/DesktopSession.h"
#include "desktop/support/LogindMock.h"
#include "desktop/support/TestWindow.h"
#include "desktop/support/Waiting.h"
#include "platform/Clock.h"
#include "platform/linux/loop/QtRunLoop.h"

#include <charconv>
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fmt/format.h>
#include <map>
#include <sstream>

namespace quorvane {
namespace {

constexpr Seconds tick = 10s;
constexpr double usualSpeed = 15;

/// The clock of all that the test starts. QUORVANE_CAMERA_SPEED says how much faster than ours it goes.
class FastClock {
public:
    FastClock() {
        for (const auto& [name, value] : variables())
            environment_.set(name, value);
    }
    [[nodiscard]] double speed() const { return speed_; }
    [[nodiscard]] Date now() const { return platform::currentDate() + (uptime() - base_) * (speed_ - 1); }
    [[nodiscard]] std::map<std::string, std::string> variables() const {
        return {{"LD_PRELOAD", QUORVANE_FAST_CLOCK},
                {"QUORVANE_TEST_CLOCK", fmt::format("{} {:.6f}", speed_, base_.count())}};
    }

private:
    static double wantedSpeed() {
        double speed = usualSpeed;
        const char* const wanted = std::getenv("QUORVANE_CAMERA_SPEED");
        if (wanted != nullptr) std::from_chars(wanted, wanted + std::strlen(wanted), speed);
        return speed;
    }

    double speed_ = wantedSpeed();
    Seconds base_ = uptime();
    Environment environment_;
};

/// A stretch of time in front of one title, as it was acted or as it was recorded.
struct Stretch {
    std::string application;
    std::string title;
    Date start;
    Date end;
};

Seconds sum(const std::vector<Stretch>& stretches) {
    Seconds sum{};
    for (const auto& stretch : stretches)
        sum += stretch.end - stretch.start;
    return sum;
}

/// Ten minutes of somebody's work on a real desktop, filmed: the script notes what it does and when, and the tracker
/// has to have seen just that.
class CameraTest : public CliTest {
protected:
    CameraTest() {
        auto& environment = setting_.environment;
        environment.merge(clock_.variables());
        // Where it is two in the afternoon, far from midnight.
        const auto hour = std::chrono::floor<std::chrono::hours>(platform::currentDate().time_since_epoch());
        environment["TZ"] = fmt::format("Etc/GMT{:+}", hour.count() % 24 - 14);
        for (const char* name : {"DISPLAY", "XAUTHORITY", "DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS",
                                 "XDG_RUNTIME_DIR", "XDG_SESSION_ID"})
            if (const char* value = std::getenv(name)) environment[name] = value;
    }

    // --- The script

    void beginTracking() {
        tracker_ = std::make_unique<ProgramRun>(
            QUORVANE_CLI, std::vector<std::string>{"--store", store().string(), "track"}, setting_);
        ASSERT_TRUE(tracker_->hasWritten("ActivityTracker: Created new record for"));
        begin();
    }
    void endTracking(int signal) {
        tracker_->sendSignal(signal);
        EXPECT_EQ(tracker_->wait().status, signal == SIGKILL ? 128 + SIGKILL : 0);
    }

    /// Brings it to the front, in the middle of a stretch or between two.
    void show(const std::string& application, const std::string& title) {
        const bool isWorking = isWorking_;
        end(clock_.now());
        auto& window = windows_[application];
        if (window)
            window->setTitle(title);
        else
            window = std::make_unique<TestWindow>(
                TestWindow::Properties{.instance = application, .wmClass = application, .title = title});
        window->activate();
        ASSERT_TRUE(waitUntil([&] { return window->hasFocus(); }));
        front_ = {application, title};
        if (isWorking) begin();
    }
    void begin() {
        acted_.push_back({front_.first, front_.second, clock_.now(), {}});
        isWorking_ = true;
    }
    void end(Date date) {
        if (std::exchange(isWorking_, false)) acted_.back().end = date;
    }
    void type(Seconds duration) {
        const Date end = clock_.now() + duration;
        do {
            pass(std::min<Seconds>(0.25s * clock_.speed(), end - clock_.now()));
            ASSERT_EQ(quorvane::run({"xdotool", "key", "a"}), 0);
            lastInput_ = clock_.now();
        } while (lastInput_ < end);
    }
    void pass(Seconds duration) const {
        EXPECT_TRUE(staysTrue([] { return true; }, duration / clock_.speed()));
    }

    // --- The film

    [[nodiscard]] std::vector<Json> rows() {
        const auto rows = parseJson(outputOf({"records", "--json"})).value_or(Json::array());
        return {rows.rbegin(), rows.rend()};
    }
    static Date dateOf(const Json& text) { return parseIso8601(text.get<std::string>()).value_or(Date()); }

    std::vector<Stretch> acted_;
    Date lastInput_;

    platform::QtRunLoop runLoop_;  // what waits serves it
    FastClock clock_;
    DesktopSession session_;
    LogindMock logind_;
    std::unique_ptr<ProgramRun> tracker_;

private:
    std::map<std::string, std::unique_ptr<TestWindow>> windows_;
    std::pair<std::string, std::string> front_;
    bool isWorking_ = false;
};

TEST_F(CameraTest, WhatIsRecordedShownReportedAndExportedIsWhatHappened) {
    std::string project = outputOf({"projects", "add", "--name", "Letters"});
    project.pop_back();
    ASSERT_EQ(CliTest::run({"rules", "add", "--name", "All", "--field", "windowTitle", "--operator", "contains",
                            "--value", "to ", "--project", project})
                  .status,
              0);
    load(R"({"entity":"AppSettings","id":"00000000-0000-4000-8000-000000000001","idle_threshold_minutes":1})");

    show("Editor", "Letter to Ann");
    beginTracking();
    type(36s);
    for (const auto& [application, title] :
         {std::pair("Editor", "Letter to Bob"), std::pair("Mail", "Answer to Ann"), std::pair("Mail", "Answer to Bob"),
          std::pair("Drawing", "Card to Ann"), std::pair("Drawing", "Card to Bob")}) {
        show(application, title);
        type(36s);
    }
    end(lastInput_);
    pass(115s);  // nobody is there
    show("Table", "Bill to Ann");
    ASSERT_EQ(quorvane::run({"xdotool", "key", "a"}), 0);
    begin();
    type(36s);
    show("Table", "Bill to Bob");
    type(36s);
    logind_.setLockedHint(true);
    end(lastInput_);
    pass(20s);
    show("Browser", "Way to Ann");
    logind_.setLockedHint(false);
    begin();
    type(30s);
    show("Browser", "Way to Bob");
    type(36s);
    endTracking(SIGTERM);
    end(lastInput_);
    show("Mail", "Answer to Ann");
    pass(10s);
    beginTracking();
    type(75s);
    const Date lastSign = dateOf(rows().back()["updated_at"]);
    EXPECT_LT(lastInput_ - lastSign, 60s + tick);
    end(lastSign);
    endTracking(SIGKILL);
    show("Editor", "Letter to Ann");
    pass(10s);
    beginTracking();
    type(65s);
    endTracking(SIGTERM);
    end(lastInput_);

    std::vector<Stretch> recorded;
    for (const Json& row : rows())
        recorded.push_back({row["app_name"], row["window_title"], dateOf(row["start_time"]), dateOf(row["end_time"])});
    const Seconds noise = 1s * clock_.speed();  // a second of ours
    const auto text = [&](const std::vector<Stretch>& stretches) {
        std::string text;
        for (const auto& [application, title, start, end] : stretches)
            text +=
                fmt::format("{} {}: {:.1f} to {:.1f}\n", application, title,
                            Seconds(start - acted_.front().start).count(), Seconds(end - acted_.front().start).count());
        return text;
    };
    SCOPED_TRACE("acted:\n" + text(acted_) + "recorded:\n" + text(recorded));
    if (std::getenv("QUORVANE_CAMERA_SPEED")) fmt::print("acted:\n{}recorded:\n{}", text(acted_), text(recorded));
    ASSERT_EQ(recorded.size(), acted_.size());
    for (std::size_t i = 0; i < acted_.size(); ++i) {
        SCOPED_TRACE(acted_[i].title);
        EXPECT_EQ(recorded[i].application, acted_[i].application);
        EXPECT_EQ(recorded[i].title, acted_[i].title);
        EXPECT_LT(std::abs(Seconds(recorded[i].start - acted_[i].start).count()), (tick + noise).count());
        EXPECT_LT(std::abs(Seconds(recorded[i].end - acted_[i].end).count()), (tick + noise).count());
    }
    EXPECT_NEAR(sum(recorded).count(), sum(acted_).count(), noise.count());

    const auto chart = parseJson(outputOf({"timeline", "--json"})).value_or(Json());
    double drawn = 0;
    for (const Json& block : chart["blocks"])
        drawn += block["duration"].get<double>() * 3600;
    EXPECT_NEAR(drawn, sum(recorded).count(), 0.01);
    EXPECT_NEAR(chart["sidebar_total_hours"].get<double>() * 3600, sum(recorded).count(), 0.01);
    const auto report = parseJson(outputOf({"report", "--range", "week", "--format", "json"})).value_or(Json());
    EXPECT_NEAR(report["totals"]["hours"].get<double>() * 3600, sum(recorded).count(), 0.01);
    std::istringstream csv(outputOf({"export-csv"}));
    std::string line;
    std::getline(csv, line);
    for (auto record = recorded.rbegin(); record != recorded.rend(); ++record) {
        ASSERT_TRUE(std::getline(csv, line));
        const Seconds length = record->end - record->start;
        EXPECT_THAT(line, HasSubstr(fmt::format(",{:.0f},", std::floor(length.count()))));
    }
}

}  // namespace
}  // namespace quorvane
